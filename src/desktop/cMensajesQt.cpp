#include "desktop/cMensajesQt.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <QWindow>

namespace ondalis {

bool cMensajesQt::Muestra(const QString &texto, bool pregunta, bool defectoSi, const QString &titulo) {
    if (m_cerrado) return false;
    QMessageBox caja;
    caja.setWindowFlag(Qt::WindowStaysOnTopHint);  // before the first show: later it would make another window
    caja.setWindowTitle(titulo);
    caja.setTextFormat(Qt::PlainText);
    caja.setText(QString(texto).remove(QChar(u'\0')));  // an engine's error text has a tail of zeros
    if (pregunta) {
        caja.setIcon(QMessageBox::Question);
        caja.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        // The mnemonics also let the plain letters answer.
        caja.button(QMessageBox::Yes)->setText(QStringLiteral("&Sí"));
        caja.button(QMessageBox::No)->setText(QStringLiteral("&No"));
        caja.setDefaultButton(defectoSi ? QMessageBox::Yes : QMessageBox::No);
        caja.setEscapeButton(QMessageBox::No);
    } else {
        caja.setIcon(QMessageBox::Information);
        caja.setStandardButtons(QMessageBox::Ok);
        caja.button(QMessageBox::Ok)->setText(QStringLiteral("Aceptar"));
    }
    // Owned by the window it came from, in the window manager's eyes only: that one may be deleted meanwhile.
    if (const QWidget *duena = QApplication::activeWindow()) {
        caja.winId();
        caja.windowHandle()->setTransientParent(duena->windowHandle());
    }
    QTimer::singleShot(0, &caja, [this, &caja] {
        caja.raise();
        caja.activateWindow();
        if (m_alFrente) m_alFrente(caja.winId());
        if (m_alAbrir) m_alAbrir();
    });
    m_abiertos.push_back(&caja);
    const int respuesta = caja.exec();
    std::erase(m_abiertos, &caja);
    return respuesta == (pregunta ? QMessageBox::Yes : QMessageBox::Ok);
}

void cMensajesQt::Cierra() {
    m_cerrado = true;
    for (QMessageBox *caja : m_abiertos) caja->done(QMessageBox::No);
}

}  // namespace ondalis
