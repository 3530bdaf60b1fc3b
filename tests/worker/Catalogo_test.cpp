// Which voices the descriptions give: asked of the real worker.
#include "worker/orden/Catalogo.h"

#include <unistd.h>

#include <chrono>

#include "worker/CarpetaMotores.h"
#include "worker/Locuciones.h"

namespace ondalis {
namespace {

class Catalogo : public testing::Test {
protected:
    std::vector<std::string> Voces(std::vector<std::string> entorno) {
        cTrabajador motor(ONDALIS_MOTOR, std::move(entorno));
        motor.Envia(TramaPideVoces{});
        m_quejas.clear();
        std::vector<std::string> voces;
        while (const auto trama = motor.Siguiente()) {
            if (std::holds_alternative<TramaFin>(*trama)) return voces;
            if (const auto *queja = std::get_if<TramaError>(&*trama)) m_quejas.push_back(queja->texto);
            const auto *v = std::get_if<TramaVoz>(&*trama);
            if (v && v->motor != "espeak") voces.push_back(v->motor + "|" + v->voz + "|" + v->lengua);
        }
        ADD_FAILURE() << "the list has no end";
        return voces;
    }
    using Lista = std::vector<std::string>;
    CarpetaMotores m_carpeta;
    Lista m_quejas;  // of the list that was asked for last
};

TEST_F(Catalogo, AVoiceShowsOnlyWhenItsProgramAndItsFilesAreThere) {
    const std::string bueno = m_carpeta.Programa("habla", "exit 0\n");
    m_carpeta.Escribe("sinpermiso", "x");
    m_carpeta.Motor("uno", bueno, "");
    m_carpeta.Motor("dos", m_carpeta.Ruta("falta"), "");
    m_carpeta.Motor("tres", m_carpeta.Ruta("sinpermiso"), "");
    m_carpeta.Motor("cuatro", bueno, "ficheros = " + m_carpeta.Ruta("modelo") + "\n");
    m_carpeta.Motor("cinco", "programa-que-no-hay-en-ninguna-parte", "");
    EXPECT_EQ(Voces(m_carpeta.Entorno()), (Lista{"uno|v|40A;C0A"}));
    m_carpeta.Escribe("modelo", "x");
    EXPECT_EQ(Voces(m_carpeta.Entorno()), (Lista{"cuatro|v|40A;C0A", "uno|v|40A;C0A"}));
}

TEST_F(Catalogo, ABadFileGivesNoVoiceAndHarmsNoOther) {
    m_carpeta.Motor("bueno", "/bin/true", "");
    m_carpeta.Escribe("m/malo.motor", "[motor]\nbasura\n");
    m_carpeta.Escribe("m/nulo.motor", std::string(100, '\0'));
    m_carpeta.Escribe("m/enorme.motor", std::string(1 << 20, '#'));
    m_carpeta.Escribe("m/Mayúscula.motor", "");
    m_carpeta.Motor("espeak", "/bin/true", "");
    std::filesystem::create_directories(m_carpeta.Ruta("m/carpeta.motor"));
    EXPECT_EQ(Voces(m_carpeta.Entorno()), (Lista{"bueno|v|40A;C0A"}));
}

TEST_F(Catalogo, ABadFileIsComplainedOfToWhoAsksForTheVoicesAndNotAgainWhenSpeaking) {
    m_carpeta.Motor("bueno", m_carpeta.Programa("habla", "cat >/dev/null\nhead -c 1600 /dev/zero\n"),
                    "formato = crudo\nhercios = 8000\n");
    m_carpeta.Escribe("m/malo.motor", "[motor]\nbasura\n");
    testing::internal::CaptureStderr();
    Voces(m_carpeta.Entorno());
    const std::string queja = m_carpeta.Ruta("m/malo.motor") + ": línea 2: no es «clave = valor»";
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "ondalis-motor: " + queja + "\n");
    EXPECT_EQ(m_quejas, Lista{queja});
    testing::internal::CaptureStderr();
    const Oido oido = cTrabajador(ONDALIS_MOTOR, m_carpeta.Entorno()).Di(Una({"bueno", "v"}, u"Una frase."));
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(oido.pcm.size(), 800u);
}

TEST_F(Catalogo, OfOneFileNameTheFirstFoldersCounts) {
    m_carpeta.Motor("uno", "/bin/true", "");
    m_carpeta.Escribe("usuario/uno.motor",
                      "[motor]\nfabricante = Mio\nprograma = /bin/true\n[voz mia]\nnombre = M\nlengua = 9\n");
    EXPECT_EQ(Voces({"ONDALIS_MOTORES=" + m_carpeta.Ruta("usuario") + ":" + m_carpeta.Ruta("m")}),
              (Lista{"uno|mia|9"}));
    // The user's data folder without being told.
    m_carpeta.Escribe("ondalis/motores/zeta.motor",
                      "[motor]\nfabricante = Z\nprograma = /bin/true\n[voz z]\nnombre = Z\nlengua = 9\n");
    const auto voces = Voces({"XDG_DATA_HOME=" + m_carpeta.Ruta("")});
    EXPECT_EQ(std::count(voces.begin(), voces.end(), "zeta|z|9"), 1);
}

TEST_F(Catalogo, EachModelInItsFoldersIsAVoiceWhoseFileNameTellsTheLanguage) {
    m_carpeta.Escribe("m/piper.motor",
                      "[motor]\nfabricante = Piper\nprograma = /bin/true\nformato = crudo\nargumentos = {modelo}\n"
                      "[modelos]\ncarpetas = {datos}/piper;" +
                          m_carpeta.Ruta("otra") + "\nterminacion = .onnx\nacompana = .json\n");
    EXPECT_EQ(Voces(m_carpeta.Entorno()), Lista{});
    for (const char *modelo : {"x/ondalis/piper/es_ES-ana-medium.onnx", "x/ondalis/piper/en/en_GB-bob-low.onnx",
                               "otra/es_ES-ana-medium.onnx", "otra/es_ES-otro-x_low.onnx"}) {
        m_carpeta.Escribe(modelo, "");
        m_carpeta.Escribe(std::string(modelo) + ".json", "{\"audio\": {\"sample_rate\" : 16000}}");
    }
    m_carpeta.Escribe("otra/fr_FR-solo-low.onnx", "");  // without its companion
    EXPECT_EQ(Voces(m_carpeta.Entorno()),
              (Lista{"piper|en_GB-bob-low|809", "piper|es_ES-ana-medium|40A;C0A", "piper|es_ES-otro-x_low|40A;C0A"}));
    EXPECT_EQ(HerciosDeModelo(m_carpeta.Ruta("otra/es_ES-ana-medium.onnx.json")), 16000u);
    EXPECT_EQ(HerciosDeModelo(m_carpeta.Ruta("otra/es_ES-ana-medium.onnx")), 0u);
}

TEST_F(Catalogo, GenderAndAgeAreToldInTheWordsOfTheTokens) {
    m_carpeta.Escribe("m/uno.motor",
                      "[motor]\nfabricante = Mio\nprograma = /bin/true\n"
                      "[voz a]\nnombre = A\nlengua = 9\ngenero = mujer\nedad = nino\n"
                      "[voz b]\nnombre = B\nlengua = 9\ngenero = hombre\nedad = adulto\n"
                      "[voz c]\nnombre = C\nlengua = 9\ngenero = neutro\nedad = mayor\n"
                      "[voz d]\nnombre = D\nlengua = 9\n");
    Lista voces;
    for (const TramaVoz &v : TramasDe(LeeCatalogo({m_carpeta.Ruta("m")}, [](const auto &, const auto &) {})))
        voces.push_back(v.voz + "|" + v.genero + "|" + v.edad);
    EXPECT_EQ(voces, (Lista{"a|Female|Child", "b|Male|Adult", "c|Neutral|Senior", "d||"}));
}

TEST_F(Catalogo, TheShippedDescriptionsAreLookedAtWithinFiveMilliseconds) {
    const auto desde = std::chrono::steady_clock::now();
    LeeCatalogo({ONDALIS_MOTORES_ENVIADOS}, [](const std::string &fichero, const std::string &motivo) {
        ADD_FAILURE() << fichero << ": " << motivo;
    });
    const std::chrono::duration<double, std::milli> dura = std::chrono::steady_clock::now() - desde;
    RecordProperty("ms", std::to_string(dura.count()));
    EXPECT_LT(dura.count(), 5);
}

}  // namespace
}  // namespace ondalis
