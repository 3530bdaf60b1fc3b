#include "settings/cGeneral.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cerrno>
#include <exception>
#include <new>

#include "settings/Renombrado.h"
#include "settings/cRegistro.h"

namespace ondalis {

cGeneral::cGeneral(cLog &log, Mensajes &mensajes, PrioridadProceso &prioridad)
    : m_log(log), m_mensajes(mensajes), m_prioridad(prioridad) {}

bool cGeneral::GetParam(const QString &linea, const QString &parametro, QString *valor) {
    const QString opcion = QLatin1Char('-') + parametro;
    const qsizetype sitio = linea.indexOf(opcion, 0, Qt::CaseInsensitive);
    if (sitio < 0) return false;
    if (valor) {
        const qsizetype desde = sitio + opcion.size() + 1;
        const qsizetype hasta = linea.indexOf(QLatin1Char('-'), desde);
        *valor = linea.mid(desde, hasta < 0 ? -1 : hasta - desde).trimmed();
    }
    return true;
}

void cGeneral::SetPrioridadAlta(bool alta) {
    const QString procedimiento = QStringLiteral("cGeneral.SetPrioridadAlta: ");
    if (!m_prioridad.SetClase(alta))
        m_log.Escribe(procedimiento, QStringLiteral("SetPriorityClass: Imposible establecer la prioridad necesaria."));
    if (!m_prioridad.SetHilo(alta))
        m_log.Escribe(procedimiento, QStringLiteral("SetThreadPriority: Imposible establecer la prioridad necesaria."));
}

bool cGeneral::VMsg(const QString &texto, bool pregunta, bool defectoSi, const QString &titulo) {
    return m_mensajes.Muestra(texto, pregunta, defectoSi,
                              titulo.isEmpty() ? QString::fromLatin1(Producto::Titulo) : titulo);
}

QString cGeneral::DirectorioWindowsTemp() {
    const QString carpeta = QDir::tempPath();
    return carpeta.endsWith(QLatin1Char('/')) ? carpeta : carpeta + QLatin1Char('/');
}

bool cGeneral::ExisteFichero(const QString &ruta) { return QFileInfo(ruta).isFile(); }

QString cGeneral::GetRutaFich(const QString &ruta) { return ruta.left(ruta.lastIndexOf(QLatin1Char('/')) + 1); }

bool cGeneral::BorraFichero(const QString &ruta) { return !ExisteFichero(ruta) || QFile::remove(ruta); }

Fallo cGeneral::Nombra(const QString &de, const QString &a) {
    if (a.isEmpty()) return Fallo::De(Fallo::ErrorDeAcceso);
    if (!ExisteFichero(de)) return Fallo::De(Fallo::FicheroNoEncontrado);
    switch (RenombraOCopia(QFile::encodeName(de).toStdString(), QFile::encodeName(a).toStdString())) {
        case 0: return {};
        case EEXIST: return Fallo::De(Fallo::FicheroYaExiste);
        case ENOENT:
        case ENOTDIR: return Fallo::De(ExisteFichero(de) ? Fallo::RutaNoEncontrada : Fallo::FicheroNoEncontrado);
        case EACCES:
        case EPERM:
        case EROFS: return Fallo::De(Fallo::PermisoDenegado);
        case ENOSPC:
        case EDQUOT:
        case EFBIG: return Fallo::De(Fallo::DiscoLleno);
        default: return Fallo::De(Fallo::ErrorDeAcceso);
    }
}

QString cGeneral::GetCampo(const QString &cadena, int campo, const QString &separador) {
    if (cadena.isEmpty() || separador.isEmpty() || campo < 1) return {};
    qsizetype desde = 0;
    for (int i = 1; i < campo; ++i) {
        const qsizetype sitio = cadena.indexOf(separador, desde);
        if (sitio < 0) return {};
        desde = sitio + separador.size();
    }
    const qsizetype hasta = cadena.indexOf(separador, desde);
    return cadena.mid(desde, hasta < 0 ? -1 : hasta - desde);
}

int cGeneral::NroSeparadores(const QString &cadena, const QString &separador) {
    if (separador.isEmpty()) return 0;
    int cuenta = 0;
    for (qsizetype sitio = cadena.indexOf(separador); sitio >= 0;
         sitio = cadena.indexOf(separador, sitio + separador.size()))
        ++cuenta;
    return cuenta;
}

// Joined and not formatted with arg(): a text of the user's may hold "%1" itself.
QString cGeneral::MiVersion(const QString &separador) {
    return QString::number(Producto::VersionMayor) + separador + QString::number(Producto::VersionMenor) + separador +
           QStringLiteral("%1").arg(Producto::Revision, 2, 10, QLatin1Char('0'));
}

QString cGeneral::VBError(const Fallo &fallo) { return fallo.descripcion + QStringLiteral(" (%1)").arg(fallo.numero); }

bool cGeneral::Ejecuta(const QString &procedimiento, Aviso aviso, const std::function<void()> &cuerpo) {
    Fallo fallo;
    try {
        cuerpo();
        return true;
    } catch (const ErrorFallo &error) {
        fallo = error.fallo;
    } catch (const std::bad_alloc &) {
        fallo = Fallo::De(Fallo::SinMemoria);
        fallo.linea = 0;  // ours would mislead: where it happened isn't known
    } catch (const std::exception &error) {
        fallo = {Fallo::LlamadaNoValida, QString::fromUtf8(error.what()), 0};
    } catch (...) {
        fallo = Fallo::De(Fallo::LlamadaNoValida);
        fallo.linea = 0;
    }
    m_log.Escribe(procedimiento, fallo, QString::number(fallo.linea));
    if (aviso == Aviso::Mensaje) VMsg(procedimiento + fallo.descripcion + QStringLiteral(" [%1]").arg(fallo.numero));
    return false;
}

}  // namespace ondalis
