#include "desktop/cAviso.h"

#include <algorithm>

#include "keys/EstableceTeclas.h"

namespace ondalis {

namespace {

// The last two are crossed over with respect to the pages' subjects, and stay so.
constexpr const char *kTemas[cAviso::NumPaginas] = {"", "LecturaPortapapeles.htm", "OpcTipoLectura.htm",
                                                    "Configuracion.htm", "OpcTeclasRapidas.htm"};

}  // namespace

QString cAviso::RotuloSiguiente() const {
    return EnUltima() ? QStringLiteral("Finalizar") : QStringLiteral("Siguiente >");
}

void cAviso::Siguiente() { m_pagina = std::min(m_pagina + 1, NumPaginas); }

void cAviso::Atras() { m_pagina = std::max(m_pagina - 1, 1); }

QString cAviso::TemaAyuda() const { return QLatin1String(kTemas[m_pagina - 1]); }

cAviso::Valores cAviso::Lee() const {
    Valores valores;
    valores.portapapeles = c.lector.opcTipoLectura.LeePortapapeles();
    valores.teclado = c.lector.opcTipoLectura.LeeTeclado();
    valores.fabricante = c.lector.opcVoz.FabricanteActivo();
    valores.voz = c.lector.opcVoz.VozActiva();
    for (std::size_t i = 0; i < Comandos.size(); ++i) {
        const QString nombre = QLatin1String(Comandos[i]);
        valores.teclas[i] = {c.lector.opcTeclasRap.GetModif(nombre), c.lector.opcTeclasRap.GetAscii(nombre)};
    }
    return valores;
}

void cAviso::Guarda(const Valores &valores) {
    const bool leiaTeclado = c.lector.opcTipoLectura.LeeTeclado();
    const bool otraVoz = !valores.fabricante.isEmpty() && (valores.fabricante != c.lector.opcVoz.FabricanteActivo() ||
                                                           valores.voz != c.lector.opcVoz.VozActiva());
    // While the engine that reads is still the accepted one: the other could not silence it.
    c.lector.cola.DejaCorrer();
    if (otraVoz && c.form.Menu().Detener.Habilitada()) c.form.Detener_Click();
    GuardaSinAplicar(valores);
    // Without a change too: a test has left the engine with its voice.
    c.lector.motor.AplicaConfiguracion();
    c.lector.filtro.SetMarca(c.lector.opcVoz.Marca());
    EstableceTeclasRapidas(c.lector.tecla, c.lector.opcTeclasRap);
    c.form.RotulaMenuLectura();
    AplicaGancho(leiaTeclado);
    if (c.aceptado) c.aceptado();
}

void cAviso::GuardaSinAplicar(const Valores &valores) {
    c.lector.opcGeneral.SalvaAviso(!valores.noMostrar);
    SalvaLectura(valores);
    SalvaVoz(valores);
    SalvaTeclas(valores);
}

void cAviso::Salva(const char *seccion, const QString &clave, const QString &valor) {
    c.registro.Salva(QStringLiteral("CU"), Producto::Ruta(), QLatin1String(seccion), clave, valor);
}

void cAviso::SalvaLectura(const Valores &valores) {
    c.lector.opcTipoLectura.SetLeePortapapeles(valores.portapapeles);
    Salva("TipoLectura", QStringLiteral("LeePortapapeles"), cRegistro::DeBooleano(valores.portapapeles));
    c.lector.opcTipoLectura.SetLeeTeclado(valores.teclado);
    Salva("TipoLectura", QStringLiteral("LeeTeclado"), cRegistro::DeBooleano(valores.teclado));
}

// What follows from another voice is stored with it: the next start is to find what is heard now.
void cAviso::SalvaVoz(const Valores &valores) {
    if (valores.fabricante.isEmpty()) return;
    if (c.lector.opcVoz.CambiaVoz(valores.fabricante, valores.voz)) {
        c.lector.opcVoz.GuardaValores();
        return;
    }
    Salva("Voz", QStringLiteral("FabricanteActivo"), valores.fabricante);
    Salva("Voz", QStringLiteral("VozActiva"), valores.voz);
}

void cAviso::SalvaTeclas(const Valores &valores) {
    for (const char *comando : {"Pausa", "Detener", "Repetir"}) {
        const auto cual = std::find_if(Comandos.begin(), Comandos.end(),
                                       [comando](const char *uno) { return qstrcmp(uno, comando) == 0; });
        const Tecla &tecla = valores.teclas[static_cast<std::size_t>(cual - Comandos.begin())];
        const QString nombre = QLatin1String(comando);
        c.lector.opcTeclasRap.SetModif(nombre, tecla.modificador);
        c.lector.opcTeclasRap.SetAscii(nombre, tecla.virtualKey);
        Salva("Teclas", QStringLiteral("Mod") + nombre, QString::number(tecla.modificador));
        Salva("Teclas", QStringLiteral("Ascii") + nombre, QString::number(tecla.virtualKey));
    }
}

void cAviso::AplicaGancho(bool leiaTeclado) {
    const bool lee = c.lector.opcTipoLectura.LeeTeclado();
    if (lee == leiaTeclado || !c.form.ProgramaActivo()) return;
    if (lee) c.form.Campos().TextoWindows.clear();
    if (c.gancho) c.gancho(lee);
}

}  // namespace ondalis
