// The page "Diccionario" with 20,000 entries: opened and painted, ten rows changed, ten added, ten
// removed, accepted. Ends with 1 if all of it together misses the goal in the median, or a row is missing at the end.
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTreeView>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <random>

#include "fakes/MensajesGuion.h"
#include "fakes/PrioridadFalsa.h"
#include "libs/ondalis_dicc.h"
#include "text/ucOpcDiccionario.h"

namespace {

constexpr int kEntradas = 20000, kCambios = 10, kVueltas = 9;
constexpr double kMetaMs = 500;

double Ms(const std::function<void()> &cuerpo) {
    const auto antes = std::chrono::steady_clock::now();
    cuerpo();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - antes).count();
}

double Informa(const char *que, std::vector<double> ms) {
    std::sort(ms.begin(), ms.end());
    std::printf("%-34s median %8.2f ms   p95 %8.2f ms   (%zu runs)\n", que, ms[ms.size() / 2],
                ms[(ms.size() - 1) * 95 / 100], ms.size());
    return ms[ms.size() / 2];
}

QString Clave(int i) { return QStringLiteral("palabra número %1").arg(i * 7919 % kEntradas); }

}  // namespace

int main(int argc, char **argv) {
    using namespace ondalis;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication aplicacion(argc, argv);
    QTemporaryDir carpeta;
    cLog log(carpeta.filePath("Ondalis.log"));
    prueba::MensajesGuion mensajes;
    prueba::PrioridadFalsa prioridad;
    cGeneral general(log, mensajes, prioridad);
    std::vector<double> abre, cambia, anade, quita, acepta, todo;
    int filas = 0;
    for (int vuelta = 0; vuelta < kVueltas; ++vuelta) {
        cOpcDiccionario diccionario(general, carpeta.path());
        LiberaMemDicc();
        for (int i = 0; i < kEntradas; ++i) AddConversionDicc(Clave(i).toUtf8().constData(), "se dice así");
        ucOpcDiccionario pagina(diccionario, general, [](const QString &) {});
        auto &clave = *pagina.findChild<QLineEdit *>(QStringLiteral("TxtClave"));
        auto &conversion = *pagina.findChild<QLineEdit *>(QStringLiteral("TxtConversion"));
        const auto pulsa = [&](const char *boton, const QString &texto) {
            clave.setText(texto);
            conversion.setText(QString::number(vuelta));
            auto *suyo = pagina.findChild<QPushButton *>(QLatin1String(boton));
            suyo->setEnabled(true);
            suyo->click();
            QCoreApplication::processEvents();
        };
        abre.push_back(Ms([&] {
            pagina.EstableceValores();
            pagina.show();
            QCoreApplication::processEvents();
            pagina.grab();
        }));
        cambia.push_back(Ms([&] {
            for (int i = 0; i < kCambios; ++i) pulsa("Actualizar", Clave(i * 97));
        }));
        anade.push_back(Ms([&] {
            for (int i = 0; i < kCambios; ++i) pulsa("Actualizar", QStringLiteral("nueva %1").arg(i * 31 % kCambios));
        }));
        quita.push_back(Ms([&] {
            for (int i = 0; i < kCambios; ++i) pulsa("Suprimir", Clave(i * 89 + 1));
        }));
        acepta.push_back(Ms([&] { pagina.GuardaValores(); }));
        todo.push_back(abre.back() + cambia.back() + anade.back() + quita.back() + acepta.back());
        filas = pagina.Lista().Cuantas();
    }
    Informa("open, sort and paint", abre);
    Informa("change 10 rows", cambia);
    Informa("add 10 rows", anade);
    Informa("remove 10 rows", quita);
    Informa("accept: table and file", acepta);
    const double mediana = Informa("all of it", todo);
    std::printf("goal: %.0f ms\n", kMetaMs);
    return mediana < kMetaMs && filas == kEntradas && mensajes.cajas.empty() ? 0 : 1;
}
