#include "platform/sistema/cLanzadorComandos.h"

#include <QProcess>

namespace ondalis {

bool cLanzadorComandos::Lanza(const QString &comando) {
    QStringList partes = QProcess::splitCommand(comando);
    if (partes.isEmpty()) return false;
    QProcess proceso;
    proceso.setProgram(partes.takeFirst());
    proceso.setArguments(partes);
    proceso.setStandardInputFile(QProcess::nullDevice());
    proceso.setStandardOutputFile(QProcess::nullDevice());
    proceso.setStandardErrorFile(QProcess::nullDevice());
    return proceso.startDetached();
}

}  // namespace ondalis
