#include "engine/Protocolo.h"

#include <gtest/gtest.h>

#include <limits>
#include <random>

namespace ondalis {
namespace {

TramaHabla HablaCompleta() {
    TramaHabla habla;
    Locucion &l = habla.locucion;
    l.numero = 0x1122334455667788;
    l.voz = {"espeak", "roa/es", true, 449, 0.75, 104, 38, 1, 2, 56};
    l.desde = 7;
    for (int tipo = 0; tipo <= static_cast<int>(kUltimoTipoTramo); tipo++) {
        Tramo tramo;
        tramo.tipo = static_cast<TipoTramo>(tipo);
        tramo.absoluto = tipo % 2 == 1;
        tramo.valor = -1.5 * tipo;
        tramo.texto = u"Ñandú 😀";
        if (tipo == 0) tramo.cortes = {{0, 0}, {3, 12}};
        l.tramos.push_back(tramo);
    }
    return habla;
}

std::vector<Trama> Todas() {
    TramaPcm llena{9, std::vector<std::int16_t>(kMaxMuestrasPcm, -32768)};
    llena.muestras[1] = 32767;
    return {HablaCompleta(),
            TramaHabla{},
            TramaPara{std::numeric_limits<std::uint64_t>::max()},
            TramaPideVoces{},
            TramaFormato{3, 22050},
            TramaPcm{3, {0, 1, -1, 32767, -32768}},
            TramaPcm{3, {}},
            llena,
            TramaPalabra{3, 1ULL << 40, 0xFFFFFFFF, 5},
            TramaMarca{3, 12, u"marca ñ"},
            TramaMarca{3, 12, u""},
            TramaFin{3},
            TramaError{3, "voz desconocida: «x»"},
            TramaVoz{"espeak", "roa/es", "Carlos", "40A;C0A", "eSpeak NG", 500, "Male", "Adult"}};
}

std::vector<std::uint8_t> Bytes(const Trama &trama) {
    std::vector<std::uint8_t> bytes;
    Codifica(trama, bytes);
    return bytes;
}

TEST(Protocolo, EveryFrameComesBackAsItWas) {
    for (const Trama &trama : Todas()) {
        Descodificador d;
        d.Alimenta(Bytes(trama));
        const auto vuelta = d.Siguiente();
        ASSERT_TRUE(vuelta.has_value()) << trama.index();
        EXPECT_EQ(*vuelta, trama) << trama.index();
        EXPECT_FALSE(d.Siguiente().has_value());
        EXPECT_FALSE(d.Roto());
    }
}

TEST(Protocolo, FramesComeBackWhereverTheBytesAreSplit) {
    std::vector<std::uint8_t> bytes;
    std::vector<Trama> tramas;
    for (const Trama &trama : Todas()) {
        if (const auto *pcm = std::get_if<TramaPcm>(&trama); pcm && pcm->muestras.size() > 100) continue;
        tramas.push_back(trama);
        Codifica(trama, bytes);
    }
    for (std::size_t corte = 0; corte <= bytes.size(); corte++) {
        Descodificador d;
        std::vector<Trama> salen;
        const std::span<const std::uint8_t> todo(bytes);
        for (const auto parte : {todo.first(corte), todo.subspan(corte)}) {
            d.Alimenta(parte);
            while (auto trama = d.Siguiente()) salen.push_back(*trama);
        }
        ASSERT_EQ(salen, tramas) << corte;
    }
}

TEST(Protocolo, FramesComeBackWhenBytesComeOneAtATime) {
    Descodificador d;
    std::vector<Trama> salen;
    for (const Trama &trama : Todas())
        for (const std::uint8_t byte : Bytes(trama)) {
            d.Alimenta({&byte, 1});
            while (auto sale = d.Siguiente()) salen.push_back(*sale);
        }
    EXPECT_EQ(salen, Todas());
}

TEST(Protocolo, TheLayoutOnTheWireIsLittleEndianBehindALength) {
    EXPECT_EQ(Bytes(TramaPara{0x0102}), (std::vector<std::uint8_t>{9, 0, 0, 0, 1, 2, 1, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(Bytes(TramaPideVoces{}), (std::vector<std::uint8_t>{1, 0, 0, 0, 2}));
    EXPECT_EQ(Bytes(TramaPcm{1, {-2}}),
              (std::vector<std::uint8_t>{15, 0, 0, 0, 4, 1, 0, 0, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0xFE, 0xFF}));
}

TEST(Protocolo, AFrameCutShortIsOnlyWaitedFor) {
    const auto bytes = Bytes(HablaCompleta());
    Descodificador d;
    d.Alimenta(std::span(bytes).first(bytes.size() - 1));
    EXPECT_FALSE(d.Siguiente().has_value());
    EXPECT_FALSE(d.Roto());
}

TEST(Protocolo, ALengthThatDoesNotFitItsFieldsBreaksForEver) {
    for (const Trama &trama : Todas())
        for (const int cambio : {-1, 1}) {
            auto bytes = Bytes(trama);
            const std::size_t longitud = bytes.size() - 4 + static_cast<std::size_t>(cambio);
            for (unsigned i = 0; i < 4; i++) bytes[i] = static_cast<std::uint8_t>(longitud >> (8 * i));
            bytes.push_back(0);
            Descodificador d;
            d.Alimenta(bytes);
            EXPECT_FALSE(d.Siguiente().has_value()) << trama.index() << " " << cambio;
            EXPECT_TRUE(d.Roto()) << trama.index() << " " << cambio;
            d.Alimenta(Bytes(TramaFin{1}));
            EXPECT_FALSE(d.Siguiente().has_value());
            EXPECT_TRUE(d.Roto());
        }
}

TEST(Protocolo, AnUnknownTypeBreaksBeforeItsBytesHaveCome) {
    for (const int tipo : {10, 11, 255}) {
        Descodificador d;
        d.Alimenta(std::vector<std::uint8_t>{0, 0, 0, 1, static_cast<std::uint8_t>(tipo)});
        EXPECT_FALSE(d.Siguiente().has_value());
        EXPECT_TRUE(d.Roto()) << tipo;
    }
}

TEST(Protocolo, AFrameOverTheLimitBreaksBeforeItsBytesHaveCome) {
    Descodificador d;
    d.Alimenta(std::vector<std::uint8_t>{1, 0, 0, 0x10});  // 256 MiB and one byte
    EXPECT_FALSE(d.Siguiente().has_value());
    EXPECT_TRUE(d.Roto());
}

TEST(Protocolo, AnEmptyFrameIsGarbage) {
    Descodificador d;
    d.Alimenta(std::vector<std::uint8_t>{0, 0, 0, 0});
    EXPECT_FALSE(d.Siguiente().has_value());
    EXPECT_TRUE(d.Roto());
}

TEST(Protocolo, ACountAboveTheBytesThatCameIsGarbageAndAllocatesNothing) {
    // A mark whose name claims four thousand million units, and samples likewise.
    for (const std::uint8_t tipo : {std::uint8_t{4}, std::uint8_t{6}}) {
        std::vector<std::uint8_t> bytes{0, 0, 0, 0, tipo};
        bytes.resize(bytes.size() + (tipo == 4 ? 8 : 16));
        bytes.insert(bytes.end(), 4, 0xFF);
        bytes[0] = static_cast<std::uint8_t>(bytes.size() - 4);
        Descodificador d;
        d.Alimenta(bytes);
        EXPECT_FALSE(d.Siguiente().has_value());
        EXPECT_TRUE(d.Roto());
    }
}

TEST(Protocolo, ValuesOutsideTheirRangeAreGarbage) {
    auto rate = Bytes(TramaFormato{1, 8000});
    rate[13] = 0x3F, rate[14] = 0x1F;  // 7999
    auto kind = Bytes(HablaCompleta());
    auto flag = kind;
    // number, "espeak", "roa/es", flag, speed, gain, five values, span count, then the first span's kind
    const std::size_t bandera = 5 + 8 + 10 + 10;
    const std::size_t tipo = bandera + 1 + 4 + 8 + 20 + 4;
    flag[bandera] = 2;
    kind[tipo] = static_cast<std::uint8_t>(kUltimoTipoTramo) + 1;
    for (const auto &bytes : {rate, flag, kind}) {
        Descodificador d;
        d.Alimenta(bytes);
        EXPECT_FALSE(d.Siguiente().has_value());
        EXPECT_TRUE(d.Roto());
    }
}

TEST(Protocolo, MoreSamplesThanAFrameMayHoldAreGarbage) {
    auto bytes = Bytes(TramaPcm{1, std::vector<std::int16_t>(kMaxMuestrasPcm)});
    bytes.insert(bytes.end(), 2, 0);
    const std::size_t longitud = bytes.size() - 4;
    bytes[0] = static_cast<std::uint8_t>(longitud), bytes[1] = static_cast<std::uint8_t>(longitud >> 8);
    bytes[13] = 1;  // the low byte of the count
    Descodificador d;
    d.Alimenta(bytes);
    EXPECT_FALSE(d.Siguiente().has_value());
    EXPECT_TRUE(d.Roto());
}

TEST(Protocolo, FramesBeforeGarbageStillComeOut) {
    auto bytes = Bytes(TramaFin{1});
    Codifica(TramaFin{2}, bytes);
    bytes.insert(bytes.end(), 8, 0xFF);
    Descodificador d;
    d.Alimenta(bytes);
    EXPECT_EQ(d.Siguiente(), Trama(TramaFin{1}));
    EXPECT_EQ(d.Siguiente(), Trama(TramaFin{2}));
    EXPECT_FALSE(d.Siguiente().has_value());
    EXPECT_TRUE(d.Roto());
}

TEST(Protocolo, RandomAndDamagedBytesNeitherCrashNorGiveWhatDoesNotEncodeBack) {
    std::mt19937 azar(20240611);
    const auto todas = Todas();
    for (int vez = 0; vez < 20000; vez++) {
        std::vector<std::uint8_t> bytes;
        if (vez % 2 == 0) {
            bytes.resize(azar() % 64);
            for (auto &b : bytes) b = static_cast<std::uint8_t>(azar());
            if (bytes.size() > 4) bytes[1] = bytes[2] = bytes[3] = 0, bytes[4] %= 11;
        } else {
            bytes = Bytes(todas[azar() % 6]);
            for (int i = 0; i < 3; i++) bytes[azar() % bytes.size()] = static_cast<std::uint8_t>(azar());
        }
        Descodificador d;
        d.Alimenta(bytes);
        std::vector<std::uint8_t> vuelta;
        while (const auto trama = d.Siguiente()) Codifica(*trama, vuelta);
        ASSERT_LE(vuelta.size(), bytes.size());
        EXPECT_TRUE(std::equal(vuelta.begin(), vuelta.end(), bytes.begin()));
    }
}

TEST(Protocolo, AManyMegabyteTextPasses) {
    TramaHabla habla = HablaCompleta();
    habla.locucion.tramos[0].texto.assign(4'000'000, u'a');
    Descodificador d;
    const auto bytes = Bytes(habla);
    for (std::size_t i = 0; i < bytes.size(); i += 65536)
        d.Alimenta(std::span(bytes).subspan(i, std::min<std::size_t>(65536, bytes.size() - i)));
    EXPECT_EQ(d.Siguiente(), Trama(habla));
}

TEST(Protocolo, TheSizeToldBeforehandIsNeverLessThanTheFrames) {
    Locucion locucion;
    locucion.voz.motor = "espeak";
    locucion.voz.voz = "roa/es";
    for (int tramos = 0; tramos < 50; ++tramos) {
        std::vector<std::uint8_t> bytes;
        Codifica(TramaHabla{locucion}, bytes);
        EXPECT_GE(TamanoDeHabla(locucion), bytes.size());
        EXPECT_LE(TamanoDeHabla(locucion), bytes.size() + 128);
        Tramo tramo;
        tramo.texto.assign(static_cast<std::size_t>(tramos) * 7, u'x');
        tramo.cortes.resize(static_cast<std::size_t>(tramos) % 3);
        locucion.tramos.push_back(tramo);
    }
}

}  // namespace
}  // namespace ondalis
