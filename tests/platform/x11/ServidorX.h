// An X server of the test program's own, other programs on it, and waiting for a condition while the event loop runs.
#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QProcess>
#include <QStandardPaths>
#include <QTimer>
#include <functional>
#include <memory>

namespace ondalis::pruebas {

// Serves the event loop until `condicion` holds; false when it doesn't within `ms`.
inline bool EsperaA(const std::function<bool()> &condicion, int ms = 10000) {
    const QDeadlineTimer plazo(ms);
    QTimer latido;  // also conditions that no event announces are looked at
    latido.start(2);
    while (!condicion()) {
        if (plazo.hasExpired()) return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

// Started with the first test that needs it and ended with the program.
class ServidorX {
public:
    static ServidorX *Unico() {
        static ServidorX servidor;
        return servidor.m_listo ? &servidor : nullptr;
    }

private:
    ServidorX() {
        int tubo[2];
        if (QStandardPaths::findExecutable(QStringLiteral("Xvfb")).isEmpty() || pipe2(tubo, O_CLOEXEC) != 0) return;
        const int escribe = tubo[1];
        m_proceso.setChildProcessModifier([escribe] { fcntl(escribe, F_SETFD, 0); });
        m_proceso.start(QStringLiteral("Xvfb"),
                        {QStringLiteral("-displayfd"), QString::number(escribe), QStringLiteral("-screen"),
                         QStringLiteral("0"), QStringLiteral("800x600x24"), QStringLiteral("-nolisten"),
                         QStringLiteral("tcp"), QStringLiteral("-noreset")});
        close(tubo[1]);
        std::string numero;
        for (char c; read(tubo[0], &c, 1) == 1 && c != '\n';) numero += c;
        close(tubo[0]);
        m_listo = !numero.empty();
        qputenv("DISPLAY", QByteArray(":") + numero.c_str());
    }
    ~ServidorX() {
        m_proceso.kill();
        m_proceso.waitForFinished();
    }

    QProcess m_proceso;
    bool m_listo = false;
};

inline bool Hay(const char *programa) { return !QStandardPaths::findExecutable(QLatin1String(programa)).isEmpty(); }

// Runs a program to its end, the event loop being served.
inline bool Corre(const QString &programa, const QStringList &argumentos, const QByteArray &entrada = {}) {
    QProcess proceso;
    proceso.setStandardOutputFile(QProcess::nullDevice());
    proceso.setStandardErrorFile(QProcess::nullDevice());
    proceso.start(programa, argumentos);
    proceso.write(entrada);
    proceso.closeWriteChannel();
    return EsperaA([&] { return proceso.state() == QProcess::NotRunning; }) && proceso.exitCode() == 0;
}

// The helper program in one of its parts.
class Ayudante {
public:
    explicit Ayudante(const QStringList &argumentos) {
        m_proceso.start(QStringLiteral(AYUDANTE_X11), argumentos);
        m_listo = EsperaLinea("listo");
    }
    ~Ayudante() { Termina(); }
    bool Listo() const { return m_listo; }
    bool Suelta() {
        m_proceso.write("suelta\n");
        return EsperaLinea("suelto");
    }
    void Termina() {
        m_proceso.closeWriteChannel();
        m_proceso.waitForFinished();
    }
    bool Acabado() const { return m_proceso.state() == QProcess::NotRunning; }

private:
    bool EsperaLinea(const QByteArray &linea) {
        return EsperaA([&] { return m_proceso.canReadLine() || m_proceso.state() == QProcess::NotRunning; }) &&
               m_proceso.readLine().trimmed() == linea;
    }
    QProcess m_proceso;
    bool m_listo = false;
};

}  // namespace ondalis::pruebas
