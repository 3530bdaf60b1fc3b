// The page "Teclas rápidas" of the configuration window: the six configurable hot keys, the word counts, the spoken
// refusals. Accepting it registers anew the keys that have changed. Main thread.
#pragma once

#include "keys/cOpcTeclasRap.h"
#include "keys/cTecla.h"
#include "settings/cGeneral.h"
#include "settings/pagina/PaginaOpciones.h"

class QGridLayout;
class QGroupBox;
class QLabel;

namespace ondalis {

class cDeslizador;
class cLista;

class ucOpcTeclasRap : public PaginaOpciones {
public:
    ucOpcTeclasRap(cOpcTeclasRap &opciones, cTecla &tecla, cGeneral &general);

    // Whether one of the other five commands shows that combination. The fixed keys aren't looked at.
    bool TeclaAsignada(const QString &nombre, int posModificador, int posTecla) const;

protected:
    void Salva() override;
    void changeEvent(QEvent *evento) override;

private:
    struct Orden {
        const char *nombre;
        QString rotulo;  // with its mnemonic
    };
    void PonOrden(QGridLayout &rejilla, const Orden &orden);
    void PonPalabras(QGridLayout &rejilla, const QString &rotulo, cDeslizador *palabras);
    void PonAvRe(QGridLayout &rejilla, const Orden &avanzar, const Orden &retroceder);
    void Alinea();
    void Orden_Click(const QString &nombre);
    cLista *Lista(const char *clase, const QString &nombre) const;

    cOpcTeclasRap &m_opciones;
    cTecla &m_tecla;
    cGeneral &m_general;
    QGridLayout *m_arriba = nullptr;  // children, all of them
    QGridLayout *m_dentro = nullptr;
    QGroupBox *m_frameAvRe = nullptr;
    std::vector<QLabel *> m_etiquetas;  // of the first column, in and outside the box
};

}  // namespace ondalis
