// The dictionary pass over 65,000 characters with 10,000 entries of which 50 occur, beside the plain way of one
// replacement an entry. Ends with 1 if the median misses the goal or the two results differ.
#include <QString>
#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <random>
#include <set>
#include <vector>

#include "libs/ondalis_dicc.h"
#include "text/AlgoritmoLlano.h"
#include "text/cFiltro.h"

namespace {

constexpr int kCaracteres = 65000;
constexpr std::size_t kEntradas = 10000, kPresentes = 50;
constexpr double kMetaMs = 20;

std::mt19937 azar(1);

// Words of the same syllables for the text and for the keys that don't occur: those share long beginnings with it.
QString Palabra() {
    static const char *const kSilabas[] = {"ca",  "sa",  "pe",   "ro", "mi",  "lu", "tan", "der",
                                           "gue", "li",  "ción", "a",  "men", "te", "es",  "pa",
                                           "ña",  "tra", "ba",   "jo", "qui", "en", "do",  "re"};
    QString palabra;
    for (auto n = 2 + azar() % 4; n > 0; --n) palabra += QString::fromUtf8(kSilabas[azar() % std::size(kSilabas)]);
    return palabra;
}

template <class F>
std::vector<double> Mide(int veces, F &&f) {
    std::vector<double> ms;
    for (int i = 0; i < veces; ++i) {
        const auto antes = std::chrono::steady_clock::now();
        f();
        ms.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - antes).count());
    }
    std::sort(ms.begin(), ms.end());
    return ms;
}

double Informa(const char *que, const std::vector<double> &ms) {
    const double mediana = ms[ms.size() / 2];
    std::printf("%-46s median %8.2f ms   p95 %8.2f ms   (%zu runs)\n", que, mediana, ms[(ms.size() - 1) * 95 / 100],
                ms.size());
    return mediana;
}

QString Prepara() {
    QString texto;
    std::vector<QString> palabras;
    while (texto.size() < kCaracteres) {
        palabras.push_back(Palabra());
        texto += palabras.back() + QLatin1Char(azar() % 9 == 0 ? '\n' : ' ');
    }
    texto.truncate(kCaracteres);
    std::set<QString> claves;
    while (claves.size() < kPresentes) {
        const QString &clave = palabras[azar() % palabras.size()];
        if (clave.size() > 7 && texto.contains(clave)) claves.insert(clave);
    }
    while (claves.size() < kEntradas) {
        const QString clave = Palabra();
        if (!texto.contains(clave)) claves.insert(clave);
    }
    std::vector<QString> orden(claves.begin(), claves.end());
    std::shuffle(orden.begin(), orden.end(), azar);
    for (const QString &clave : orden)
        AddConversionDicc(clave.toUtf8().constData(), ("x" + clave.toUtf8().toHex()).constData());
    return texto;
}

}  // namespace

int main() {
    const QString texto = Prepara();
    QTemporaryDir carpeta;
    ondalis::cLog log(carpeta.path() + QStringLiteral("/Ondalis.log"));
    QString rapido, llano;

    Informa("filter, first reading (builds its index)", Mide(20, [&] {
                ondalis::cFiltro nuevo(log);
                rapido = texto;
                nuevo.TrataConversionesDiccionario(rapido);
            }));
    ondalis::cFiltro filtro(log);
    rapido = texto;
    filtro.TrataConversionesDiccionario(rapido);
    const double mediana = Informa("filter, 65,000 characters, 10,000 entries", Mide(200, [&] {
                                       rapido = texto;
                                       filtro.TrataConversionesDiccionario(rapido);
                                   }));
    Informa("plain, one replacement an entry", Mide(5, [&] {
                llano = texto;
                ondalis::ConversionesUnaAUna(llano);
            }));
    if (rapido != llano || rapido == texto) {
        std::puts("FAILED: the results differ");
        return 1;
    }
    if (mediana >= kMetaMs) {
        std::printf("FAILED: the goal is a median under %.0f ms\n", kMetaMs);
        return 1;
    }
    return 0;
}
