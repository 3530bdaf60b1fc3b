// The reading on the session bus as the desktop's media keys and players' controls know it (MPRIS,
// org.mpris.MediaPlayer2.ondalis). Owned by main. Main thread.
#pragma once

#include <QDBusAbstractAdaptor>
#include <QDBusObjectPath>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include "platform/dbus/cConexionBus.h"
#include "reader/cReproduccion.h"

namespace ondalis {

class cMpris : public QObject {
    Q_OBJECT
public:
    static constexpr const char *Nombre = "org.mpris.MediaPlayer2.ondalis";
    static constexpr const char *Ruta = "/org/mpris/MediaPlayer2";
    static constexpr const char *InterfazReproductor = "org.mpris.MediaPlayer2.Player";

    cMpris(cConexionBus &bus, cReproduccion &controles);
    ~cMpris() override;

    QVariantMap Estado() const;  // the properties that change

private:
    void Avisa();

    cConexionBus &m_bus;
    cReproduccion &m_controles;
    QVariantMap m_dicho;  // what watchers know
    bool m_pedido = false;
};

class cMprisRaiz : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2")
    Q_PROPERTY(bool CanQuit READ No)
    Q_PROPERTY(bool CanRaise READ No)
    Q_PROPERTY(bool HasTrackList READ No)
    Q_PROPERTY(QString Identity READ Identity)
    Q_PROPERTY(QString DesktopEntry READ DesktopEntry)
    Q_PROPERTY(QStringList SupportedUriSchemes READ Ninguno)
    Q_PROPERTY(QStringList SupportedMimeTypes READ Ninguno)
public:
    explicit cMprisRaiz(QObject *padre) : QDBusAbstractAdaptor(padre) {}
    bool No() const { return false; }
    QString Identity() const;
    QString DesktopEntry() const { return QStringLiteral("com.ferrano.Ondalis"); }
    QStringList Ninguno() const { return {}; }
public Q_SLOTS:
    void Raise() {}
    void Quit() {}
};

class cMprisReproductor : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.mpris.MediaPlayer2.Player")
    Q_PROPERTY(QString PlaybackStatus READ PlaybackStatus)
    Q_PROPERTY(QVariantMap Metadata READ Metadata)
    Q_PROPERTY(bool CanPlay READ CanPlay)
    Q_PROPERTY(bool CanPause READ CanPause)
    Q_PROPERTY(bool CanGoNext READ CanGoNext)
    Q_PROPERTY(bool CanGoPrevious READ CanGoPrevious)
    Q_PROPERTY(bool CanSeek READ CanSeek)
    Q_PROPERTY(bool CanControl READ CanControl)
    Q_PROPERTY(double Rate READ Uno WRITE Ignora)
    Q_PROPERTY(double MinimumRate READ Uno)
    Q_PROPERTY(double MaximumRate READ Uno)
    Q_PROPERTY(double Volume READ Uno WRITE Ignora)
    Q_PROPERTY(qlonglong Position READ Position)
public:
    cMprisReproductor(cMpris &padre, cReproduccion &controles)
        : QDBusAbstractAdaptor(&padre), m_padre(padre), m_controles(controles) {}
    QString PlaybackStatus() const { return m_padre.Estado()[QStringLiteral("PlaybackStatus")].toString(); }
    QVariantMap Metadata() const { return m_padre.Estado()[QStringLiteral("Metadata")].toMap(); }
    bool CanPlay() const { return m_controles.PuedeReproducir(); }
    bool CanPause() const { return m_controles.PuedePausar(); }
    bool CanGoNext() const { return m_controles.PuedeAvanzar(); }
    bool CanGoPrevious() const { return m_controles.PuedeRetroceder(); }
    bool CanSeek() const { return false; }
    bool CanControl() const { return true; }
    double Uno() const { return 1.0; }
    void Ignora(double) {}
    qlonglong Position() const { return 0; }
public Q_SLOTS:
    void Play() { m_controles.Reproduce(); }
    void Pause() { m_controles.Pausa(); }
    void PlayPause() { m_controles.ReproduceOPausa(); }
    void Stop() { m_controles.Detiene(); }
    void Next() { m_controles.Avanza(); }
    void Previous() { m_controles.Retrocede(); }
    void Seek(qlonglong) {}
    void SetPosition(const QDBusObjectPath &, qlonglong) {}
    void OpenUri(const QString &) {}
Q_SIGNALS:
    void Seeked(qlonglong Position);

private:
    cMpris &m_padre;
    cReproduccion &m_controles;
};

}  // namespace ondalis
