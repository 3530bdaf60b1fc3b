#include "settings/cRegistro.h"

#include <QDateTime>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QMetaType>
#include <QSaveFile>
#include <QSettings>
#include <QStringDecoder>
#include <algorithm>
#include <map>

#include "libs/candado.h"

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

// Escapes what makes a line go on in the next one: its quotes when one is left open, a backslash at its end. True when
// there were such lines.
bool CierraLineas(QByteArray &texto) {
    bool cambiado = false;
    QByteArrayList lineas = texto.split('\n');
    for (QByteArray &linea : lineas) {
        if (linea.trimmed().startsWith(';')) continue;
        const QByteArray retorno = linea.endsWith('\r') ? QByteArrayLiteral("\r") : QByteArray();
        linea.chop(retorno.size());
        QByteArray escapada;
        int comillas = 0;
        bool colgada = false;
        for (qsizetype i = 0; i < linea.size(); ++i) {
            if (linea[i] == '"') {
                ++comillas;
                escapada += '\\';
            }
            escapada += linea[i];
            if (linea[i] != '\\') continue;
            colgada = i + 1 == linea.size();
            escapada += colgada ? '\\' : linea[++i];
        }
        if (comillas % 2 != 0)
            linea = escapada;
        else if (colgada)
            linea += '\\';
        cambiado = cambiado || comillas % 2 != 0 || colgada;
        linea += retorno;
    }
    if (cambiado) texto = lineas.join('\n');
    return cambiado;
}

bool EsUtf8SinNulos(const QByteArray &texto) {
    if (texto.contains('\0')) return false;
    QStringDecoder lector(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    [[maybe_unused]] const QString leido = lector(texto);
    return !lector.hasError();
}

}  // namespace

struct cRegistro::Almacenes {
    // What is known of a file as it was when it was last looked at.
    struct Visto {
        QDateTime fecha;
        qint64 tamano = -1;
        bool extrano = false;  // in another encoding: what QSettings writes isn't what stood there
    };
    std::map<std::pair<bool, QString>, std::unique_ptr<QSettings>> abiertos;
    std::map<QString, Visto> vistos;
    bool atascado = false;  // the last lock wasn't had in time
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
    Revisa(almacen->fileName());
    almacen->sync();  // sees what another process or the user's editor has written
    return *almacen;
}

// A quote that is left open makes QSettings take all that follows for one value, up to the next quote, and a backslash
// at a line's end swallows the next line: such lines are mended before they are read, and the file as it was is kept.
void cRegistro::Revisa(const QString &fichero) {
    constexpr qint64 kMaxTamano = 16 * 1024 * 1024;
    const QFileInfo datos(fichero);
    if (!datos.isFile() || datos.size() > kMaxTamano) return;
    Almacenes::Visto &visto = m_almacenes->vistos[fichero];
    if (visto.fecha == datos.lastModified() && visto.tamano == datos.size()) return;
    QFile entrada(fichero);
    if (!entrada.open(QIODevice::ReadOnly)) return;
    QByteArray texto = entrada.readAll();
    entrada.close();
    visto = {datos.lastModified(), datos.size(), !EsUtf8SinNulos(texto)};
    const QString procedimiento = QStringLiteral("cRegistro.Lee: ");
    if (!CierraLineas(texto)) return;
    QLockFile candado(fichero + QStringLiteral(".lock"));
    if (!CandadoLibre(fichero, procedimiento) || !candado.tryLock(0)) return;
    Aparta(fichero, procedimiento);
    QSaveFile salida(fichero);
    if (salida.open(QIODevice::WriteOnly) && salida.write(texto) == texto.size()) salida.commit();
}

// QSettings would wait for its lock without end.
bool cRegistro::CandadoLibre(const QString &fichero, const QString &procedimiento) {
    constexpr int kEsperaMs = 1000, kTopeMs = 10'000, kTramoMs = 10;
    const QString ruta = fichero + QStringLiteral(".lock");
    if (!QFileInfo::exists(ruta)) return true;
    QLockFile candado(ruta);
    candado.setStaleLockTime(0);
    // Somebody who holds it and hangs costs one wait, not one for each value. Looking again and again finds the lock of
    // a process that was killed a moment ago, too young to be told from one just made.
    QDeadlineTimer plazo(m_almacenes->atascado ? 0 : kEsperaMs);
    const QDeadlineTimer tope(m_almacenes->atascado ? 0 : kTopeMs);
    QDateTime anterior;
    do {
        // Others who write one after the other don't hang: each new lock of theirs begins the wait anew.
        if (const QDateTime deAhora = QFileInfo(ruta).lastModified(); deAhora != anterior && !tope.hasExpired()) {
            anterior = deAhora;
            plazo.setRemainingTime(std::min<qint64>(kEsperaMs, tope.remainingTime()));
        }
        SueltaCandadoHuerfano(QFile::encodeName(ruta).constData());
        if (candado.tryLock(static_cast<int>(std::min<qint64>(plazo.remainingTime(), kTramoMs)))) {
            m_almacenes->atascado = false;
            return true;
        }
    } while (candado.error() == QLockFile::LockFailedError && !plazo.hasExpired());
    if (candado.error() != QLockFile::LockFailedError) return true;  // QSettings will say so
    m_almacenes->atascado = true;
    m_log.Escribe(procedimiento, Fallo::De(Fallo::PermisoDenegado), ruta);
    return false;
}

void cRegistro::Aparta(const QString &fichero, const QString &procedimiento) {
    for (int i = 1;; ++i) {
        const QString copia = fichero + QStringLiteral(".%1.mal").arg(i);
        if (QFileInfo::exists(copia)) continue;
        const bool copiado = QFile::copy(fichero, copia);
        m_log.Escribe(procedimiento, (copiado ? QStringLiteral("Configuración dañada, copia en ")
                                              : QStringLiteral("Configuración dañada, imposible copiarla a ")) +
                                         copia);
        return;
    }
}

void cRegistro::ApartaSiEstaDanado(QSettings &almacen, const QString &procedimiento) {
    const QString fichero = almacen.fileName();
    if (almacen.status() != QSettings::FormatError && !m_almacenes->vistos[fichero].extrano) return;
    if (QFileInfo::exists(fichero)) Aparta(fichero, procedimiento);
    m_almacenes->vistos.erase(fichero);
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
    const QString procedimiento = QStringLiteral("cRegistro.Salva: ");
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
    if (!CandadoLibre(almacen.fileName(), procedimiento)) return false;
    // A null text must not become an invalid value.
    almacen.setValue(clave, valor.isNull() ? QStringLiteral("") : valor);
    return Guarda(raiz, ruta, procedimiento);
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
    const QString procedimiento = QStringLiteral("cRegistro.Borra: ");
    QSettings &almacen = Almacen(raiz, ruta);
    if (!CandadoLibre(almacen.fileName(), procedimiento)) return false;
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
    return Guarda(raiz, ruta, procedimiento);
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
