#include "desktop/cDialogoFicheroQt.h"

#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QTimer>

namespace ondalis {

namespace {

// The text is shown as it stands: what the toolkit hides is the last bracket, which is ours and holds the patterns.
QStringList FiltrosDeQt(const std::vector<FiltroFichero> &filtros) {
    QStringList deQt;
    for (const FiltroFichero &filtro : filtros) {
        const QString patrones =
            filtro.patrones.isEmpty() ? QStringLiteral("*") : filtro.patrones.join(QLatin1Char(' '));
        deQt << filtro.texto + QLatin1Char('(') + patrones + QLatin1Char(')');
    }
    return deQt;
}

class Dialogo : public QFileDialog {
public:
    Dialogo(QWidget *dueno, const PeticionFichero &peticion, Mensajes &mensajes)
        : QFileDialog(dueno, peticion.titulo), m_mensajes(mensajes), m_conCarpeta(peticion.carpetaDebeExistir) {}

    // Also the buttons and the Enter key come here.
    void accept() override {
        const QStringList elegidos = selectedFiles();
        const QString carpeta = elegidos.isEmpty() ? QString() : QFileInfo(elegidos.first()).path();
        if (m_conCarpeta && !carpeta.isEmpty() && !QFileInfo(carpeta).isDir()) {
            m_mensajes.Muestra(QStringLiteral("La carpeta ") + carpeta + QStringLiteral(" no existe."), false, false,
                               windowTitle());
            return;
        }
        QFileDialog::accept();
    }

private:
    Mensajes &m_mensajes;
    bool m_conCarpeta;
};

}  // namespace

std::optional<QString> cDialogoFicheroQt::Elige(const PeticionFichero &peticion) {
    if (m_cerrado) return std::nullopt;
    Dialogo dialogo(QApplication::activeWindow(), peticion, m_mensajes);
    dialogo.setWindowFlag(Qt::WindowStaysOnTopHint);  // before the first show: later it would make another window
    dialogo.setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite |
                       QFileDialog::HideNameFilterDetails);
    // Opening any file: a name that doesn't exist yet may be typed, and nothing touches its extension.
    dialogo.setAcceptMode(QFileDialog::AcceptOpen);
    dialogo.setFileMode(QFileDialog::AnyFile);
    dialogo.setDefaultSuffix(peticion.extension);
    if (!peticion.filtros.empty()) dialogo.setNameFilters(FiltrosDeQt(peticion.filtros));
    dialogo.setDirectory(QFileInfo(m_carpeta).isDir() ? m_carpeta : QDir::homePath());
    QTimer::singleShot(0, &dialogo, [this, &dialogo] {
        dialogo.raise();
        dialogo.activateWindow();
        if (m_alFrente) m_alFrente(dialogo.winId());
    });
    QFileDialog *const anterior = std::exchange(m_abierto, &dialogo);
    const bool aceptado = dialogo.exec() == QDialog::Accepted;
    m_abierto = anterior;
    const QStringList elegidos = dialogo.selectedFiles();
    if (!aceptado || elegidos.isEmpty()) return std::nullopt;
    m_carpeta = QFileInfo(elegidos.first()).path();
    return elegidos.first();
}

void cDialogoFicheroQt::Cierra() {
    m_cerrado = true;
    if (m_abierto) m_abierto->reject();
}

}  // namespace ondalis
