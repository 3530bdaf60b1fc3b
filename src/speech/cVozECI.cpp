#include "speech/cVozECI.h"

#include <QFile>
#include <algorithm>
#include <array>
#include <new>
#include <utility>

#include "settings/cGeneral.h"
#include "text/Codificacion.h"

namespace ondalis {

namespace {

struct Hablante {
    const char *nombre;  // UTF-8
    const char *anotacion;
};

constexpr std::array<Hablante, 30> kHablantes{{
    {"Reed", "`l1.0`v1"},       {"Shelley", "`l1.0`v2"}, {"Sandy", "`l1.0`v3"},  {"Grandma", "`l1.0`v7"},
    {"Grandpa", "`l1.0`v8"},    {"Justin", "`l1.1`v1"},  {"Jane", "`l1.1`v2"},   {"Nicky", "`l1.1`v3"},
    {"Nanny", "`l1.1`v7"},      {"Gramps", "`l1.1`v8"},  {"Carlos", "`l2.0`v1"}, {"Pilar", "`l2.0`v2"},
    {"Pepe", "`l2.0`v3"},       {"Abuela", "`l2.0`v7"},  {"Abuelo", "`l2.0`v8"}, {"Jacques", "`l3.0`v1"},
    {"Jacqueline", "`l3.0`v2"}, {"Marius", "`l3.0`v3"},  {"Mamie", "`l3.0`v7"},  {"Grandpère", "`l3.0`v8"},
    {"Max", "`l4.0`v1"},        {"Gisela", "`l4.0`v2"},  {"Matti", "`l4.0`v3"},  {"Oma", "`l4.0`v7"},
    {"Opa", "`l4.0`v8"},        {"Enrico", "`l5.0`v1"},  {"Lucia", "`l5.0`v2"},  {"Chicco", "`l5.0`v3"},
    {"Nonna", "`l5.0`v7"},      {"Nonno", "`l5.0`v8"},
}};

struct Lengua {
    std::int32_t lcid;
    const char *anotacion;
};

// As it has always been: Danish, Finnish, Norwegian and Swedish have the digit one where the others have the letter,
// and the ECI voice knows these for what they are; the last row has no dialect.
constexpr std::array<Lengua, 13> kLenguas{{
    {1030, "`115.0"},
    {1031, "`l4.0"},
    {1033, "`l1.0"},
    {1034, "`l2.0"},
    {1035, "`19.0"},
    {1036, "`l3.0"},
    {1040, "`l5.0"},
    {1041, "`l8.0"},
    {1044, "`113.0"},
    {1046, "`l7.0"},
    {1053, "`114.0"},
    {2057, "`l1.1"},
    {2070, "`l7"},
}};

const QString kErrorLectura = QStringLiteral("Error al realizar la lectura");
const QString kErrorTextoLeer = QStringLiteral("Error al establecer el texto para leer");

}  // namespace

cVozECI::cVozECI(cLog &log, const OperacionesECI &eci) : m_log(log), m_eci(eci) { m_eci.crea(); }

cVozECI::~cVozECI() { m_eci.borra(); }

void cVozECI::SetHablante(const QString &nombre, std::int32_t lengua) {
    const auto hablante = std::ranges::find_if(
        kHablantes, [&nombre](const Hablante &fila) { return nombre.contains(QString::fromUtf8(fila.nombre)); });
    if (hablante != kHablantes.end()) {
        m_anotacionHablante = QLatin1String(hablante->anotacion);
        return;
    }
    const auto fila = std::ranges::find(kLenguas, lengua, &Lengua::lcid);
    m_anotacionHablante = fila == kLenguas.end() ? QString() : QLatin1String(fila->anotacion);
}

void cVozECI::SetAvanzados(std::int16_t tono, std::int16_t fluctuacion, std::int16_t aspereza, std::int16_t diafonia,
                           std::int16_t tamCabeza) {
    m_tono = tono;
    m_fluctuacion = fluctuacion;
    m_aspereza = aspereza;
    m_diafonia = diafonia;
    m_tamCabeza = tamCabeza;
}

// Whatever was sounding is cut without notice.
template <class F>
bool cVozECI::Procedimiento(const QString &nombre, F &&cuerpo) {
    m_errorTexto.clear();
    m_sinEsperar = false;
    m_eci.calla();
    m_eci.restaura();
    try {
        if (cuerpo()) return true;
    } catch (const std::bad_alloc &) {
        m_errorTexto = cGeneral::VBError(Fallo::De(Fallo::SinMemoria));
    }
    m_log.Escribe(nombre, m_errorTexto);
    return false;
}

bool cVozECI::Habla(const QString &texto, bool sincrono, const QString &destino, bool avanzados) {
    return Procedimiento(QStringLiteral("cVozECI.Habla: "), [&] {
        return Destina(destino, QStringLiteral("Error al establecer el fichero de grabación ")) &&
               AddTexto(Prefijo(avanzados) + QLatin1Char(' ') + texto, kErrorTextoLeer) && Lanza(sincrono);
    });
}

bool cVozECI::Fallida() {
    if (!m_sinEsperar || EstaHablando()) return false;
    m_sinEsperar = false;
    std::array<char, ONDALIS_ECI_TAM_ERROR> bufer{};
    m_eci.ultimoError(bufer.data());
    if (bufer[0] == '\0') return false;
    FallaECI(kErrorLectura);
    m_log.Escribe(QStringLiteral("cVozECI.Habla: "), m_errorTexto);
    return true;
}

bool cVozECI::HablaFichero(const QString &fichero, bool sincrono, const QString &destino, bool avanzados) {
    return Procedimiento(QStringLiteral("cVozECI.HablaFichero: "), [&] {
        QString texto;
        return Destina(destino, QStringLiteral("Error al establecer el fichero de audio ")) &&
               AddTexto(Prefijo(avanzados), QStringLiteral("Error al establecer los parámetros de voz")) &&
               LeeFichero(fichero, texto) && AddTexto(std::move(texto), kErrorTextoLeer) && Lanza(sincrono);
    });
}

QString cVozECI::UltimoError() const { return QStringLiteral("cVozECI: ") + m_errorTexto; }

QString cVozECI::Prefijo(bool avanzados) const {
    QString prefijo = m_anotacionHablante;
    const auto pon = [&prefijo](const char *anotacion, std::int32_t valor) {
        prefijo += QLatin1String(anotacion) + QString::number(valor);
    };
    pon("`vs", m_velocidad);
    pon("`vv", m_volumen);
    if (!avanzados) return prefijo;
    pon("`vb", m_tono);
    pon("`vf", m_fluctuacion);
    pon("`vr", m_aspereza);
    pon("`vy", m_diafonia);
    pon("`vh", m_tamCabeza);
    return prefijo;
}

bool cVozECI::Destina(const QString &destino, const QString &mensaje) {
    if (destino.isEmpty() || m_eci.setDestino(QFile::encodeName(destino).constData()) != 0) return true;
    return FallaECI(mensaje + destino);
}

// The operation's texts end at their first zero, what is read doesn't.
bool cVozECI::AddTexto(QString texto, const QString &mensaje) {
    texto.replace(QChar(u'\0'), QLatin1Char(' '));
    return m_eci.addTexto(texto.toUtf8().constData()) != 0 || FallaECI(mensaje);
}

bool cVozECI::LeeFichero(const QString &fichero, QString &texto) {
    Fallo fallo = LeeFicheroTexto(fichero, texto);
    if (!fallo && texto.isEmpty()) fallo = Fallo::De(Fallo::LlamadaNoValida);
    if (fallo) m_errorTexto = cGeneral::VBError(fallo);
    return !fallo;
}

bool cVozECI::Lanza(bool sincrono) {
    m_sinEsperar = m_eci.habla(sincrono ? 1 : 0) != 0;
    if (!m_sinEsperar) return FallaECI(kErrorLectura);
    m_sinEsperar = !sincrono;
    return true;
}

// The operation's buffer becomes text whole: what lies behind the error's end stays part of it, 256 characters in all.
bool cVozECI::FallaECI(const QString &mensaje) {
    std::array<char, ONDALIS_ECI_TAM_ERROR> bufer{};
    m_eci.ultimoError(bufer.data());
    QString texto = QString::fromUtf8(bufer.data(), bufer.size());
    texto.resize(ONDALIS_ECI_TAM_ERROR, QChar(u'\0'));
    m_errorTexto = mensaje + QLatin1String("\r\n") + texto;
    return false;
}

}  // namespace ondalis
