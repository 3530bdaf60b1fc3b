#include "settings/ucOpcGeneral.h"

#include <QCheckBox>
#include <QVBoxLayout>

#include "settings/pagina/CasillaEnlace.h"

namespace ondalis {

ucOpcGeneral::ucOpcGeneral(cOpcGeneral &opciones, std::function<void()> sonidosAviso)
    : PaginaOpciones("FrameGeneral", &opciones), m_opciones(opciones), m_sonidosAviso(std::move(sonidosAviso)) {
    auto *columna = new QVBoxLayout(this);
    columna->addWidget(Casilla(
        "CheckInicio", QStringLiteral("A&rrancar %1 al inicio de Windows").arg(QLatin1String(Producto::Titulo))));
    columna->addWidget(Casilla("CheckActivo", QStringLiteral("&Iniciar activado"), true));
    columna->addWidget(Casilla("CheckPrioridad", QStringLiteral("&Prioridad alta sobre otros programas")));
    const CasillaConEnlace sonidos =
        PonCasillaConEnlace(*columna, "CheckSonidos", "LinkSonidos", QStringLiteral("&Utilizar &sonidos de aviso"),
                            QStringLiteral("Elegir los sonidos de aviso"), true);
    m_sonidos = sonidos.casilla;
    m_linkSonidos = sonidos.enlace;
    columna->addWidget(Casilla("CheckVerLupa", QStringLiteral("&Mostrar ventana de aumento de pantalla")));
    columna->addWidget(Casilla("CheckSignosPunt", QStringLiteral("Pronunciar si&gnos de puntuación")));
    columna->addStretch();
    connect(m_sonidos, &QCheckBox::toggled, this, [this] { Habilita(); });
    if (m_sonidosAviso) connect(m_linkSonidos, &cEnlace::clicked, this, m_sonidosAviso);
    Habilita();
}

void ucOpcGeneral::Habilita() { m_linkSonidos->setEnabled(m_sonidosAviso && m_sonidos->isChecked()); }

}  // namespace ondalis
