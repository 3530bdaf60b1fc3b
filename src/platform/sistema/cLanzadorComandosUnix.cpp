#include "platform/sistema/cLanzadorComandosUnix.h"

#include <QProcess>

namespace ondalis {

bool cLanzadorComandosUnix::Lanza(const QString &comando) {
    QStringList partes = QProcess::splitCommand(comando);
    if (partes.isEmpty()) return false;
    QProcess proceso;
    proceso.setProgram(partes.takeFirst());
    proceso.setArguments(partes);
    // Our descriptors all close on exec but these three.
    proceso.setStandardInputFile(QProcess::nullDevice());
    proceso.setStandardOutputFile(QProcess::nullDevice());
    proceso.setStandardErrorFile(QProcess::nullDevice());
    return proceso.startDetached();
}

}  // namespace ondalis
