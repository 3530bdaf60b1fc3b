#include "audio/ExtractorTexto.h"

#include <QFile>
#include <algorithm>

#include "text/Codificacion.h"

namespace ondalis {

namespace {

constexpr qint64 kMuestra = 64 * 1024;  // bytes looked at to tell a text from other data

// Endings of documents whose text has to be taken out by a converter.
constexpr const char *kDocumentos[] = {
    ".pdf", ".dot", ".doc",  ".rtf", ".htm", ".mht", "html", ".url",  ".scd",  ".xls",
    ".xlw", ".olk", ".pab",  ".wk1", ".wk3", ".wk4", ".ans", ".wri",  ".mcw",  ".wpd",
    ".wps", ".wpt", ".docx", ".odt", ".ods", ".odp", ".ppt", ".pptx", ".xlsx", ".epub",
};

bool EsDocumento(const QString &fichero) {
    return std::ranges::any_of(kDocumentos, [&fichero](const char *final) {
        return fichero.endsWith(QLatin1String(final), Qt::CaseInsensitive);
    });
}

bool PareceBinario(const QString &fichero) {
    if (!cGeneral::ExisteFichero(fichero)) return false;
    QFile abierto(fichero);
    return abierto.open(QIODevice::ReadOnly) && EsBinario(abierto.read(kMuestra));
}

}  // namespace

Fallo ExtractorTextoLlano::ConvierteAFichTexto(const QString &fichero, bool muestraError, QString &texto) {
    texto = fichero;
    if (!EsDocumento(fichero) && !PareceBinario(fichero)) return {};
    Fallo fallo =
        Fallo::De(Fallo::LlamadaNoValida, QStringLiteral("Por ahora sólo se leen ficheros de texto: ") + fichero);
    m_general.Log().Escribe(QStringLiteral("ConvierteAFichTexto: "), fallo);
    if (muestraError) m_general.VMsg(QStringLiteral("ConvierteAFichTexto: ") + cGeneral::VBError(fallo));
    return fallo;
}

}  // namespace ondalis
