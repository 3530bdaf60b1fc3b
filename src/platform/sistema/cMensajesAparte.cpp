#include "platform/sistema/cMensajesAparte.h"

#include <signal.h>
#include <sys/prctl.h>

#include <QEventLoop>
#include <QProcess>
#include <cstdio>

namespace ondalis {

namespace {

void EscribeSinPantalla(QString texto, bool pregunta) {
    texto.remove(QLatin1Char('\r'));
    if (pregunta) texto += QStringLiteral(" (no hay escritorio donde preguntar: No)");
    std::fprintf(stderr, "ondalis: %s\n", texto.toLocal8Bit().constData());
    std::fflush(stderr);
}

}  // namespace

cMensajesAparte::cMensajesAparte(QString programa, std::function<bool()> hayPantalla)
    : m_programa(std::move(programa)), m_hayPantalla(std::move(hayPantalla)) {}

bool cMensajesAparte::Muestra(const QString &texto, bool pregunta, bool defectoSi, const QString &titulo) {
    if (m_cerrado) return false;
    const char *clase = !pregunta ? Aviso : defectoSi ? PreguntaSi : PreguntaNo;
    const int codigo = m_hayPantalla() ? Pregunta(texto, clase, titulo) : -1;
    if (codigo == CodigoSi) return true;
    if (codigo != CodigoNo && !m_cerrado) EscribeSinPantalla(texto, pregunta);
    return false;
}

int cMensajesAparte::Pregunta(const QString &texto, const char *clase, const QString &titulo) {
    QProcess proceso;
    proceso.setProgram(m_programa);
    proceso.setArguments({QLatin1String(Argumento), QLatin1String(clase), titulo});
    proceso.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    proceso.setStandardOutputFile(QProcess::nullDevice());
    proceso.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });  // no box outlives what it tells of
    QEventLoop espera;
    QObject::connect(&proceso, &QProcess::finished, &espera, [&espera] { espera.quit(); });
    QObject::connect(&proceso, &QProcess::errorOccurred, &espera, [&espera](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) espera.quit();
    });
    proceso.start();
    proceso.write(texto.toUtf8());
    proceso.closeWriteChannel();
    m_proceso = &proceso;
    if (proceso.state() != QProcess::NotRunning) espera.exec();
    m_proceso = nullptr;
    return proceso.exitStatus() == QProcess::NormalExit ? proceso.exitCode() : -1;
}

void cMensajesAparte::Cierra() {
    m_cerrado = true;
    if (m_proceso) m_proceso->kill();
}

}  // namespace ondalis
