#include "reader/cLote.h"

#include <QFileInfo>
#include <limits>

#include "audio/cOpcGrabar.h"
#include "text/Codificacion.h"

namespace ondalis {

namespace {

const QString kProcedimiento = QStringLiteral("EjecutaLineaComandos: ");
const QString kFileTxt = QStringLiteral("FILETXT");
const QString kOutputFile = QStringLiteral("OUTPUTFILE");

constexpr std::int32_t kLenguaIBM = 1034;      // whatever the voice's own
constexpr std::int32_t kHerciosIBM = 11025;    // of every file of that engine
constexpr std::int32_t kHerciosSAPI5 = 16000;  // where the settings tell none
constexpr int kMenor16 = std::numeric_limits<std::int16_t>::min();
constexpr int kMayor16 = std::numeric_limits<std::int16_t>::max();
constexpr int kMenor32 = std::numeric_limits<std::int32_t>::min();
constexpr int kMayor32 = std::numeric_limits<std::int32_t>::max();

QString SinComillas(QString texto) { return texto.remove(QLatin1Char('"')); }

bool EsMp3(const QString &salida) { return salida.endsWith(QLatin1String(".mp3"), Qt::CaseInsensitive); }

bool ElMismo(const QString &uno, const QString &otro) {
    return !otro.isEmpty() && QFileInfo(uno).canonicalFilePath() == QFileInfo(otro).canonicalFilePath();
}

}  // namespace

bool cLote::EjecutaLineaComandos(const QString &orden) {
    auto linea = cLineaLote::De(orden);
    if (!linea) return false;
    p.general.Ejecuta(kProcedimiento, cGeneral::Aviso::Mensaje, [&] { Trabaja(*linea); });
    return true;
}

void cLote::Interrumpe() {
    m_interrumpido = true;
    if (m_eci) m_eci->Cancela();
    if (m_sapi5) m_sapi5->Cancela();
}

void cLote::Trabaja(cLineaLote &linea) {
    if (LeeTexto("Voz", "FabricanteActivo", "IBM") == QLatin1String("IBM"))
        PreparaVozIBM();
    else if (!PreparaVozSAPI5())
        return;

    QString valor;
    if (linea.Valor(kFileTxt, &valor))
        CasoFichero(linea, SinComillas(valor));
    else if (linea.Valor(kOutputFile, &valor))
        CasoTextoAFichero(linea, valor);
    else
        HablaAlto({.esFichero = false, .texto = linea.Hablada(), .fichero = {}});
}

void cLote::PreparaVozIBM() {
    m_eci = &p.vozECI();
    m_eci->SetHablante(LeeTexto("Voz", "VozActiva", "Carlos"), kLenguaIBM);
    m_eci->SetVelocidad(static_cast<std::int16_t>(LeeEntero("Voz", "Velocidad", 170, kMenor16, kMayor16)));
    m_eci->SetVolumen(LeeEntero("Voz", "Volumen", 40000, kMenor32, kMayor32));
}

bool cLote::PreparaVozSAPI5() {
    if (!p.chequeaSAPI5Compatible()) {
        p.general.VMsg(QStringLiteral("SAPI5.1 no está correctamente instalado."));
        return false;
    }
    VozSAPI5Lote &voz = p.vozSAPI5();
    const QString nombre = LeeTexto("Voz", "VozActiva", "Microsoft Mary");
    if (!voz.Elige(nombre))
        throw ErrorFallo{
            Fallo::De(Fallo::LlamadaNoValida, QStringLiteral("No hay ninguna voz con el nombre ") + nombre)};
    voz.SetRate(LeeEntero("Voz", "Velocidad", voz.Rate(), kMenor16, kMayor16));
    voz.SetVolume(LeeEntero("Voz", "Volumen", voz.Volume(), kMenor32, kMayor32));
    m_sapi5 = &voz;
    return true;
}

void cLote::CasoFichero(const cLineaLote &linea, const QString &fichero) {
    QString convertido;
    if (const Fallo fallo = p.extractor.ConvierteAFichTexto(fichero, false, convertido)) {
        p.general.VMsg(fallo.descripcion);  // the log has it
        return;
    }
    Materia materia{.esFichero = true, .texto = {}, .fichero = convertido};
    if (m_sapi5)
        if (const Fallo fallo = LeeFicheroTexto(convertido, materia.texto)) throw ErrorFallo{fallo};

    QString valor;
    if (!linea.Valor(kOutputFile, &valor)) {
        HablaAlto(materia);  // what had to be converted first stays beside its source
        return;
    }
    if (!Graba(materia, SinComillas(valor))) return;
    // A user's own file of that name has not been made here.
    if (convertido != fichero && convertido.contains(QLatin1String("~temp.txt"))) cGeneral::BorraFichero(convertido);
}

void cLote::CasoTextoAFichero(cLineaLote &linea, const QString &valor) {
    linea.Quita(kOutputFile, valor);
    Graba({.esFichero = false, .texto = linea.Hablada(), .fichero = {}}, SinComillas(valor));
}

void cLote::HablaAlto(const Materia &materia) {
    if (m_interrumpido) return;
    if (p.haySonido())
        Habla(materia, QString());
    else if (!m_interrumpido)
        throw ErrorFallo{Fallo::De(Fallo::LlamadaNoValida, QStringLiteral("NO se ha detectado tarjeta de sonido."))};
}

bool cLote::Graba(const Materia &materia, const QString &salida) {
    if (!PreparaSalida(salida, materia.fichero)) return false;
    struct Limpieza {
        TemporalLote &temporal;
        ~Limpieza() { temporal.Borra(); }
    } const limpieza{p.temporal};
    return Habla(materia, p.temporal.Ruta()) && FinalizaSalida(salida);
}

bool cLote::PreparaSalida(const QString &salida, const QString &fuente) {
    // Asked first: an existing target would be deleted for a file that can't be made.
    if (EsMp3(salida) && !p.conversor) {
        p.general.VMsg(QStringLiteral("La grabación en MP3 no está disponible en esta versión."));
        return false;
    }
    if (cGeneral::ExisteFichero(salida)) {
        const bool si = p.general.VMsg(
            QStringLiteral("El fichero %1 ya existe.").arg(salida) + QStringLiteral("\r\n¿Desea sobrescribirlo?"),
            true);
        if (!si || m_interrumpido) return false;
        // The text to be spoken isn't given up for its own sound.
        if (ElMismo(salida, fuente) || !cGeneral::BorraFichero(salida)) {
            p.general.VMsg(QStringLiteral("Imposible sobrescribir ") + salida);
            return false;
        }
    }
    if (p.temporal.Prepara()) return true;
    p.general.VMsg(QStringLiteral("Imposible sobrescribir el fichero temporal"));
    return false;
}

bool cLote::FinalizaSalida(const QString &salida) {
    if (EsMp3(salida)) return ConvierteAMp3(salida);
    if (const Fallo fallo = p.temporal.Nombra(salida)) throw ErrorFallo{fallo};
    return true;
}

bool cLote::ConvierteAMp3(const QString &salida) {
    const int hercios = LeeEntero("Grabar", "CalidadkHz", m_eci ? kHerciosIBM : kHerciosSAPI5, kMenor32, kMayor32);
    const int kbps = LeeEntero("Grabar", "Calidadkbps", 24, kMenor16, kMayor16);
    const bool hecho =
        p.conversor->Convierte(p.temporal.Ruta(), salida, m_eci ? kHerciosIBM : hercios, kbps, m_eci ? hercios : -1);
    // It can't be interrupted: what it made meanwhile isn't wanted any more.
    if (hecho && m_interrumpido) cGeneral::BorraFichero(salida);
    return hecho && !m_interrumpido;
}

bool cLote::Habla(const Materia &materia, const QString &destino) {
    if (m_interrumpido) return false;
    if (m_sapi5) {
        const int hercios = LeeEntero("Grabar", "CalidadkHz", kHerciosSAPI5, kMenor32, kMayor32);
        const Fallo fallo = destino.isEmpty() ? m_sapi5->Speak(materia.texto)
                                              : m_sapi5->SpeakAFichero(materia.texto, destino, FormatoSAPI5(hercios));
        if (fallo && !m_interrumpido) throw ErrorFallo{fallo};
        return !fallo && !m_interrumpido;
    }
    const bool bien = materia.esFichero ? m_eci->HablaFichero(materia.fichero, true, destino, false)
                                        : m_eci->Habla(materia.texto, true, destino, false);
    if (!bien && !m_interrumpido) p.general.VMsg(m_eci->UltimoError());
    return bien && !m_interrumpido;
}

QString cLote::LeeTexto(const char *seccion, const char *nombre, const char *defecto) {
    return p.registro.Lee(QStringLiteral("CU"), Producto::Ruta(), QLatin1String(seccion), QLatin1String(nombre),
                          QString::fromLatin1(defecto));
}

int cLote::LeeEntero(const char *seccion, const char *nombre, int defecto, int minimo, int maximo) {
    const auto texto =
        p.registro.Busca(QStringLiteral("CU"), Producto::Ruta(), QLatin1String(seccion), QLatin1String(nombre));
    if (!texto) return defecto;
    bool bien = false;
    const int valor = texto->trimmed().toInt(&bien);
    if (bien && valor >= minimo && valor <= maximo) return valor;
    p.general.Log().Escribe(kProcedimiento, Fallo::De(Fallo::TipoNoCoincide),
                            QStringLiteral("%1\\%2").arg(QLatin1String(seccion), QLatin1String(nombre)));
    return defecto;
}

}  // namespace ondalis
