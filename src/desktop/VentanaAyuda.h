// The help's window: topics of the help file, links, back and forward. All by keyboard; the text has a cursor, so that
// a screen reader follows it and its parts can be copied, which reads them aloud. Made on first use. Main thread.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>

#include "desktop/cAyuda.h"

class QPushButton;
class QTextBrowser;

namespace ondalis {

class VentanaAyuda : public QWidget {
public:
    explicit VentanaAyuda(QWidget *duena);

    // The page of that name and, behind "#", the place in it. False when the help file has no such page.
    bool VeA(const QString &tema);
    QString Tema() const;  // shown now

    static constexpr const char *Inicio = "Inicio.htm";

protected:
    void keyPressEvent(QKeyEvent *evento) override;

private:
    QPushButton *Boton(const char *nombre, const QString &rotulo, const QString &tecla);
    void MuestraTitulo();

    QTextBrowser *m_texto;  // children
    QPushButton *m_atras, *m_adelante;
};

// The help file and its window.
class cVisorAyuda : public VisorAyuda {
public:
    // `alFrente`: brings a window to the front where asking politely isn't enough; may be empty.
    explicit cVisorAyuda(std::function<void(WId)> alFrente = {}) : m_alFrente(std::move(alFrente)) {}
    ~cVisorAyuda() override;
    cVisorAyuda(const cVisorAyuda &) = delete;
    cVisorAyuda &operator=(const cVisorAyuda &) = delete;

    Fallo Muestra(const QString &fichero, std::uintptr_t ventana, const QString &tema) override;
    void Cierra();
    VentanaAyuda *Ventana() { return m_ventana; }  // null while there is none

private:
    std::function<void(WId)> m_alFrente;
    QString m_registrado;
    QPointer<VentanaAyuda> m_ventana;  // its owner may take it along
};

}  // namespace ondalis
