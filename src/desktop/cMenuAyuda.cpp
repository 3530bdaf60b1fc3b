#include "desktop/cMenuAyuda.h"

namespace ondalis {

cMenuAyuda::cMenuAyuda(cGeneral &general, cCola &cola, cAyuda &ayuda, AbridorEscritorio &abridor, QStringList carpetas,
                       QString pagina)
    : m_general(general),
      m_cola(cola),
      m_ayuda(ayuda),
      m_abridor(abridor),
      m_carpetas(std::move(carpetas)),
      m_pagina(std::move(pagina)) {}

void cMenuAyuda::AyudaOndalis_Click() { m_ayuda.MuestraClave(0, QString()); }

void cMenuAyuda::VerLeame_Click() {
    QStringList candidatos;
    for (const char *nombre : {"/LEAME.txt", "/LEAMEEMP.pdf"})
        for (const QString &carpeta : m_carpetas) candidatos << carpeta + QLatin1String(nombre);
    AbreLeame(candidatos, 0);
}

void cMenuAyuda::AbreLeame(const QStringList &candidatos, qsizetype i) {
    while (i < candidatos.size() && !cGeneral::ExisteFichero(candidatos[i])) ++i;
    if (i == candidatos.size()) {
        m_general.VMsg(QStringLiteral("Imposible abrir el archivo \"%1/LEAME.txt\"").arg(m_carpetas.constLast()));
        return;
    }
    m_abridor.Abre(candidatos[i], [this, candidatos, i](bool bien) {
        if (!bien) m_cola.Pon(cCola::Clase::Orden, [this, candidatos, i] { AbreLeame(candidatos, i + 1); });
    });
}

void cMenuAyuda::PagWebOndalis_Click() {
    m_abridor.Abre(m_pagina, [this](bool bien) {
        if (bien) return;
        m_cola.Pon(cCola::Clase::Orden,
                   [this] { m_general.VMsg(QStringLiteral("Imposible abrir la página ") + m_pagina); });
    });
}

}  // namespace ondalis
