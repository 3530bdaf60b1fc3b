#include "speech/SpFileStream.h"

#include <QFile>
#include <cerrno>
#include <utility>

namespace ondalis {

namespace {

// The published types of 16-bit mono; 0 stands for the engine's own rate.
int HerciosDe(int tipo) {
    static constexpr std::pair<int, int> kTipos[] = {{6, 8000},   {10, 11025}, {14, 12000}, {18, 16000}, {22, 22050},
                                                     {26, 24000}, {30, 32000}, {34, 44100}, {38, 48000}};
    for (const auto &[publicado, hercios] : kTipos)
        if (tipo == publicado) return hercios;
    return 0;
}

}  // namespace

Fallo FalloDeFichero(int error, std::source_location lugar) {
    switch (error) {
        case 0: return {};
        case ENOSPC:
        case EDQUOT: return Fallo::De(Fallo::DiscoLleno, lugar);
        case EACCES:
        case EPERM:
        case EROFS: return Fallo::De(Fallo::PermisoDenegado, lugar);
        case ENOENT:
        case ENOTDIR: return Fallo::De(Fallo::RutaNoEncontrada, lugar);
        default: return Fallo::De(Fallo::ErrorDeAcceso, lugar);
    }
}

Fallo SpFileStream::Open(const QString &ruta, int modo) {
    if (modo != SSFMCreateForWrite) return Fallo::De(Fallo::LlamadaNoValida);
    const int error =
        m_salida.Destina(QFile::encodeName(ruta).toStdString(), HerciosDe(m_formato), cFicheroWav::Modo::Crea);
    return FalloDeFichero(error);
}

Fallo SpFileStream::Close() { return FalloDeFichero(m_salida.Cierra()); }

}  // namespace ondalis
