#include "reader/cPruebaVoz.h"

namespace ondalis {

namespace {

constexpr int kMilesIBM = 1000;  // the engine's volume for one step of the "IBM" scroll bar
constexpr int kCeroSAPI5 = 10;   // the scroll bar's number for the speed 0 of SAPI 5

// The icon of the clock for as long as it lives, while the program is active.
class IconoReloj {
public:
    explicit IconoReloj(cFormPrincipal &form) : m_form(form), m_anterior(form.GetIconoBarra()) {
        m_form.SetIconoBarra(QStringLiteral("reloj"));
    }
    ~IconoReloj() {
        if (m_form.ProgramaActivo()) m_form.SetIconoBarra(m_anterior);
    }
    IconoReloj(const IconoReloj &) = delete;
    IconoReloj &operator=(const IconoReloj &) = delete;

private:
    cFormPrincipal &m_form;
    int m_anterior;
};

std::int16_t Corto(int valor) { return static_cast<std::int16_t>(valor); }

}  // namespace

void cPruebaVoz::PruebaPagina(const QString &fabricante, const QString &nombre, const ValoresPrueba &valores) {
    c.lector.general.Ejecuta(QStringLiteral("ucOpcVoz.Probar_Click: "), cGeneral::Aviso::Mensaje, [&] {
        cCursor cursor(c.puntero, c.lector.cola);
        cursor.SetPuntero(cCursor::RelojDeArena);
        std::optional<IconoReloj> icono;
        if (c.form.ProgramaActivo()) {
            if (c.form.Menu().Detener.Habilitada()) c.form.Detener_Click();
            icono.emplace(c.form);
        }
        Prueba(fabricante, nombre, &valores);
    });
}

void cPruebaVoz::PruebaAsistente(const QString &fabricante, const QString &nombre) {
    c.lector.general.Ejecuta(QStringLiteral("Aviso.Probar_Click: "), cGeneral::Aviso::Mensaje, [&] {
        cCursor cursor(c.puntero, c.lector.cola);
        cursor.SetPuntero(cCursor::RelojDeArena);
        Prueba(fabricante, nombre, nullptr);
    });
}

// The state is set before the engine is touched, since its events may come inside the call. A speech that is refused
// has no events: the state must not stay, or no notice would be heard any more.
void cPruebaVoz::Prueba(const QString &fabricante, const QString &nombre, const ValoresPrueba *valores) {
    const RegistroVoz *fila = c.voces.Busca(fabricante, nombre);
    if (fila == nullptr) throw ErrorFallo{Fallo::De(Fallo::LlamadaNoValida)};
    const bool ibm = fabricante == QLatin1String("IBM");
    // What the other engine says would sound together with the test, and its end would be taken for the test's. Under
    // the state that it was spoken in: the session must notice that its reading has ended.
    if (!ibm) c.voz.Detiene();
    if (c.sapi5 != nullptr && (ibm || valores == nullptr)) static_cast<void>(c.sapi5->Speak({}, SpVoice::Purga));
    const std::int32_t antes = std::exchange(c.lector.estadoVoz.valor, cEstadoVoz::Aviso);
    if (ibm) {
        HablaIBM(*fila, valores);
    } else if (const Fallo fallo = HablaSAPI5(*fila, valores)) {
        c.lector.estadoVoz.valor = antes;
        throw ErrorFallo{fallo};
    }
}

void cPruebaVoz::HablaIBM(const RegistroVoz &fila, const ValoresPrueba *valores) {
    c.voz.SetModo(QLatin1Char('{') + fila.IdModo + QLatin1Char('}'));
    if (valores != nullptr) {
        const bool suyos = valores->avanzados;
        c.voz.SetVelocidad(Corto(valores->velocidad));
        c.voz.SetVolumen(valores->volumen * kMilesIBM);
        c.voz.SetTono(suyos ? Corto(valores->tono) : fila.TonoDefecto);
        c.voz.SetFluctuacion(suyos ? Corto(valores->fluctuacion) : fila.FluctuacionDefecto);
        c.voz.SetAspereza(suyos ? Corto(valores->aspereza) : fila.AsperezaDefecto);
        c.voz.SetDiafonia(suyos ? Corto(valores->diafonia) : fila.DiafoniaDefecto);
        c.voz.SetTamCabeza(suyos ? Corto(valores->tamCabeza) : fila.TamCabezaDefecto);
    }
    c.voz.SetTexto(Texto(fila));
    c.voz.Habla(true);
}

Fallo cPruebaVoz::HablaSAPI5(const RegistroVoz &fila, const ValoresPrueba *valores) {
    if (c.sapi5 == nullptr) return Fallo::De(Fallo::LlamadaNoValida);
    const std::vector<TokenVoz> tokens = c.sapi5->GetVoices({}, {});
    const auto numero = static_cast<std::size_t>(fila.NumeroSAPI5);
    if (fila.NumeroSAPI5 < 0 || numero >= tokens.size()) return Fallo::De(Fallo::LlamadaNoValida);
    c.sapi5->SetVoice(tokens[numero]);
    if (valores != nullptr) {
        c.sapi5->SetRate(valores->velocidad - kCeroSAPI5);
        c.sapi5->SetVolume(valores->volumen);
    }
    return c.sapi5->Speak(Texto(fila), SpVoice::Purga);
}

QString cPruebaVoz::Texto(const RegistroVoz &fila) const {
    return c.lector.txtLengua.GetTexto(fila.Lengua, 0) + QLatin1Char(' ') + fila.NombreVoz;
}

}  // namespace ondalis
