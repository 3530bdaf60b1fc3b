// The clipboard of the X server, read without ever waiting for its owner. Each new owner is asked at once for its
// targets and then for its text; the answers come as events, piecewise if the text is long. Owned by main. Main thread.
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <functional>
#include <vector>

#include "platform/x11/cConexionX.h"
#include "reader/Portapapeles.h"
#include "settings/cLog.h"

namespace ondalis {

class cPortapapelesX11 : public Portapapeles {
public:
    struct Plazos {
        int respuestaMs = 1000;  // an owner that is silent for so long is logged as hung; its late answer still counts
        int retornoMs = 2000;    // the emptied text coming back within this is a clipboard manager's doing
    };

    // A longer text is five hundred hours of speech and no copy to be read: it is logged and counts as none.
    static constexpr std::size_t MaxBytes = std::size_t{32} * 1024 * 1024;

    explicit cPortapapelesX11(cLog &log);
    cPortapapelesX11(cLog &log, Plazos plazos, std::size_t maxBytes = MaxBytes);
    ~cPortapapelesX11() override;
    cPortapapelesX11(const cPortapapelesX11 &) = delete;
    cPortapapelesX11 &operator=(const cPortapapelesX11 &) = delete;

    // False when there is no X server: then there is never a text.
    bool Conectado() const { return m_conexion.Viva(); }

    bool HayTexto() const override { return m_hay; }
    QString Texto() const override { return m_texto; }
    // There is no text any more when it returns; the selection loses its owner as soon as the text that it empties is
    // known, so that it can be told from a copy when it comes back. A copy made after the call stands.
    void Vacia() override;

    // Called when a fetch has ended, by whatever outcome.
    void AlRecoger(std::function<void()> aviso) { m_alRecoger = std::move(aviso); }

private:
    enum class Paso { Reposo, Formatos, Secreto, Texto, Trozos };

    void Evento(const xcb_generic_event_t &evento);
    void CambiaDueno(const xcb_generic_event_t &evento);
    void Recoge(xcb_timestamp_t momento);
    void Pide(Paso paso, xcb_atom_t formato);
    void Contesta(xcb_atom_t propiedad);
    void LeeFormatos(const std::vector<char> &datos);
    void SiguienteFormato();
    void LeeTrozo();
    void Desecha();
    void Termina(bool hay, const QString &texto);
    void Abandona();
    void Suelta(xcb_timestamp_t momento);
    void PideMomento();
    void Renuncia(xcb_timestamp_t momento);
    void Rehusa(const xcb_generic_event_t &evento);
    std::vector<char> LeePropiedad(xcb_atom_t propiedad, xcb_atom_t &tipo);
    QString Descifra(const std::vector<char> &datos, xcb_atom_t formato) const;

    cLog &m_log;
    Plazos m_plazos;
    std::size_t m_maxBytes;
    cConexionX m_conexion;
    std::uint8_t m_primerEvento = 0;  // of XFixes
    xcb_window_t m_ventana = XCB_NONE;
    xcb_atom_t m_portapapeles = 0, m_formatos = 0, m_utf8 = 0, m_textoUtf8 = 0, m_secreto = 0, m_incr = 0, m_reloj = 0;
    std::vector<xcb_atom_t> m_propiedades;  // taken in turn: a late answer never lands in a newer request's property
    std::size_t m_turno = 0;

    Paso m_paso = Paso::Reposo;
    xcb_timestamp_t m_momento = XCB_CURRENT_TIME;
    xcb_atom_t m_formato = 0;
    xcb_atom_t m_propiedad = 0;
    std::vector<xcb_atom_t> m_porProbar;
    std::vector<char> m_trozos;
    QTimer m_plazo;

    bool m_hay = false;
    QString m_texto;
    bool m_vaciando = false;          // the fetch under way is of a text that is to be emptied
    xcb_window_t m_dueno = XCB_NONE;  // the owner told of last
    bool m_esperaMomento = false;     // the server's time is on its way, to give the selection up
    QString m_vaciado;
    QElapsedTimer m_desdeVaciado;
    std::function<void()> m_alRecoger;
};

}  // namespace ondalis
