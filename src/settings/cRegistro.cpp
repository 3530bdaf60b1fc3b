#include "settings/cRegistro.h"

#include <QFile>
#include <QFileInfo>
#include <QMetaType>
#include <QSettings>
#include <map>

namespace ondalis {

namespace {

bool EsUsuario(const QString &raiz) { return raiz == QLatin1String("CU"); }

// The name as it stands among `presentes`; sections and keys are blind to case, and an exact one goes first.
std::optional<QString> Presente(const QStringList &presentes, const QString &nombre) {
    if (presentes.contains(nombre)) return nombre;
    for (const QString &uno : presentes)
        if (uno.compare(nombre, Qt::CaseInsensitive) == 0) return uno;
    return std::nullopt;
}

// Full key of a section's value as it stands in the store, or nothing.
std::optional<QString> ClavePresente(QSettings &almacen, const QString &seccion, const QString &nombre) {
    if (seccion.isEmpty()) return Presente(almacen.childKeys(), nombre);
    const QStringList grupos = almacen.childGroups();
    std::optional<QString> hallada;
    // A file edited by hand may hold a section in two spellings; QSettings takes them for two.
    for (const QString &grupo : grupos) {
        if (grupo.compare(seccion, Qt::CaseInsensitive) != 0) continue;
        almacen.beginGroup(grupo);
        const auto clave = Presente(almacen.childKeys(), nombre);
        almacen.endGroup();
        if (clave && (!hallada || grupo == seccion)) hallada = grupo + QLatin1Char('/') + *clave;
    }
    return hallada;
}

// What QSettings made of a stored value as the text that stands in the file.
std::optional<QString> ATextoPlano(const QVariant &valor) {
    if (!valor.isValid()) return std::nullopt;
    // A value written by hand with a comma comes as a list.
    QString texto =
        valor.typeId() == QMetaType::QStringList ? valor.toStringList().join(QLatin1String(", ")) : valor.toString();
    if (texto.isEmpty() && valor.typeId() != QMetaType::QString) return std::nullopt;
    return texto.remove(QChar::Null);
}

}  // namespace

struct cRegistro::Almacenes {
    std::map<std::pair<bool, QString>, std::unique_ptr<QSettings>> abiertos;
};

cRegistro::cRegistro(cLog &log, QString carpetaAutoarranque)
    : m_log(log), m_carpetaAutoarranque(std::move(carpetaAutoarranque)), m_almacenes(std::make_unique<Almacenes>()) {}

cRegistro::~cRegistro() = default;

QSettings &cRegistro::Almacen(const QString &raiz, const QString &ruta) {
    auto &almacen = m_almacenes->abiertos[{EsUsuario(raiz), ruta}];
    if (!almacen) {
        almacen = std::make_unique<QSettings>(
            QSettings::IniFormat, EsUsuario(raiz) ? QSettings::UserScope : QSettings::SystemScope,
            ruta.section(QLatin1Char('\\'), 0, 0), ruta.section(QLatin1Char('\\'), 1));
        almacen->setFallbacksEnabled(false);
    }
    almacen->sync();  // sees what another process or the user's editor has written
    return *almacen;
}

void cRegistro::ApartaSiEstaDanado(QSettings &almacen, const QString &procedimiento) {
    if (almacen.status() != QSettings::FormatError || !QFileInfo::exists(almacen.fileName())) return;
    for (int i = 1;; ++i) {
        const QString copia = almacen.fileName() + QStringLiteral(".%1.mal").arg(i);
        if (QFileInfo::exists(copia)) continue;
        const bool copiado = QFile::copy(almacen.fileName(), copia);
        m_log.Escribe(procedimiento, (copiado ? QStringLiteral("Configuración dañada, copia en ")
                                              : QStringLiteral("Configuración dañada, imposible copiarla a ")) +
                                         copia);
        return;
    }
}

bool cRegistro::Guarda(const QString &raiz, const QString &ruta, const QString &procedimiento) {
    const auto sitio = m_almacenes->abiertos.find({EsUsuario(raiz), ruta});
    QSettings &almacen = *sitio->second;
    ApartaSiEstaDanado(almacen, procedimiento);
    almacen.sync();
    const bool guardado = almacen.status() != QSettings::AccessError && QFileInfo(almacen.fileName()).isFile();
    if (!guardado) m_log.Escribe(procedimiento, Fallo::De(Fallo::ErrorDeAcceso), almacen.fileName());
    // A QSettings never forgets its first trouble; a new one tells the next trouble from this.
    if (almacen.status() != QSettings::NoError) m_almacenes->abiertos.erase(sitio);
    return guardado;
}

bool cRegistro::Salva(const QString &raiz, const QString &ruta, const QString &seccion, const QString &nombre,
                      const QString &valor) {
    if (nombre.isEmpty()) return false;
    QSettings &almacen = Almacen(raiz, ruta);
    QString clave = nombre;
    if (const auto presente = ClavePresente(almacen, seccion, nombre)) {
        clave = *presente;
        // Accepting a page writes all its settings, most of them unchanged; each write costs a disk's flush.
        if (almacen.status() == QSettings::NoError && almacen.value(clave) == QVariant(valor) && !valor.isNull())
            return true;
    } else if (!seccion.isEmpty()) {
        clave = Presente(almacen.childGroups(), seccion).value_or(seccion) + QLatin1Char('/') + nombre;
    }
    // A null text must not become an invalid value.
    almacen.setValue(clave, valor.isNull() ? QStringLiteral("") : valor);
    return Guarda(raiz, ruta, QStringLiteral("cRegistro.Salva: "));
}

std::optional<QString> cRegistro::Busca(const QString &raiz, const QString &ruta, const QString &seccion,
                                        const QString &nombre) {
    QSettings &almacen = Almacen(raiz, ruta);
    const auto clave = ClavePresente(almacen, seccion, nombre);
    return clave ? ATextoPlano(almacen.value(*clave)) : std::nullopt;
}

QString cRegistro::Lee(const QString &raiz, const QString &ruta, const QString &seccion, const QString &nombre,
                       const QVariant &defecto) {
    const auto texto = Busca(raiz, ruta, seccion, nombre);
    return texto ? *texto : ATexto(defecto);
}

bool cRegistro::Borra(const QString &raiz, const QString &ruta, const std::optional<QString> &seccion,
                      const std::optional<QString> &nombre) {
    QSettings &almacen = Almacen(raiz, ruta);
    QStringList claves;
    if (nombre) {
        while (const auto clave = ClavePresente(almacen, seccion.value_or(QString()), *nombre)) {
            claves << *clave;
            almacen.remove(*clave);
        }
    } else if (!seccion || seccion->isEmpty()) {
        if (!almacen.childGroups().isEmpty()) return false;
        claves = almacen.childKeys();
        almacen.clear();
    } else {
        const QStringList grupos = almacen.childGroups();
        for (const QString &grupo : grupos) {
            if (grupo.compare(*seccion, Qt::CaseInsensitive) != 0) continue;
            almacen.beginGroup(grupo);
            const bool anidado = !almacen.childGroups().isEmpty();
            almacen.endGroup();
            if (anidado) return false;
            claves << grupo;
            almacen.remove(grupo);
        }
    }
    if (claves.isEmpty()) return false;
    return Guarda(raiz, ruta, QStringLiteral("cRegistro.Borra: "));
}

std::optional<bool> cRegistro::ABooleano(const QString &texto) {
    const QString palabra = texto.trimmed().toLower();
    if (palabra == QLatin1String("true") || palabra == QLatin1String("1") || palabra == QLatin1String("-1"))
        return true;
    if (palabra == QLatin1String("false") || palabra == QLatin1String("0")) return false;
    return std::nullopt;
}

QString cRegistro::DeBooleano(bool valor) { return valor ? QStringLiteral("True") : QStringLiteral("False"); }

QString cRegistro::ATexto(const QVariant &valor) {
    if (valor.typeId() == QMetaType::Bool) return DeBooleano(valor.toBool());
    return valor.toString();
}

}  // namespace ondalis
