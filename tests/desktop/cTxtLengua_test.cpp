#include "desktop/cTxtLengua.h"

#include <gtest/gtest.h>

namespace ondalis {
namespace {

struct Fila {
    const char *espanol, *ingles, *frances, *aleman, *italiano;
};

const Fila kFilas[] = {
    {"Esta es la voz de", "This is the voice of", "Celle-ci est la voix de", "Dieses ist die Stimme von",
     "Questa è la voce di"},
    {"está inactivo", "is inactive", "est inactif", "ist unaktiviert", "è inattivo"},
    {"No hay lectura para detener", "There is no speech to stop", "Il n'y a pas de lecture pour arrêter",
     "Es gibt keine Rede, zum zu stoppen", "Non ci è discorso da arrestarsi"},
    {"No hay lectura para reanudar", "There is no speech to resume", "Il n'y a pas de lecture pour reprendre",
     "Es gibt keine Rede, zum wieder aufzunehmen", "Non ci è discorso da riprendere"},
    {"No hay texto para leer", "There is no text to speech", "Il n'y a pas de texte pour lire",
     "Es gibt keinen Text zur Rede", "Non ci è testo a discorso"},
    {"No hay lectura para avanzar", "There is no speech to advance", "Il n'y a pas de lecture pour avancer",
     "Es gibt keine Rede, zum vorzurücken", "Non ci è discorso da avanzare"},
    {"No hay lectura para retroceder", "There is no speech to back", "Il n'y a pas de lecture pour reculer",
     "Es gibt keine Rede, zum zurückzuziehen", "Non ci è discorso da sostenere"},
    {"Error al seleccionar el documento de Microsoft Word", "Error when selecting the document of Microsoft Word",
     "Erreur en choisissant le document de Microsoft Word",
     "Störung, wenn das Dokument von Microsoft Word vorgewählt wird",
     "Errore quando selezionano il documento di Microsoft Word"},
    {"Error al seleccionar el documento de Microsoft Internet Explorer",
     "Error when selecting the document of Microsoft Internet Explorer",
     "Erreur en choisissant le document de Microsoft Internet Explorer",
     "Störung, wenn das Dokument von Microsoft Internet Explorer vorgewählt wird",
     "Errore quando selezionano il documento del Microsoft Internet Explorer"},
    {"Error al seleccionar el documento de Microsoft Outlook", "Error when selecting the document of Microsoft Outlook",
     "Erreur en choisissant le document de Microsoft Outlook",
     "Störung, wenn das Dokument von Microsoft Outlook vorgewählt wird",
     "Errore quando selezionano il documento del Microsoft Outlook"},
    {"La ventana que está en primer plano no se puede leer automáticamente. Seleccione y copie el texto",
     "The top most window cannot be read automatically. Select and you copy the text",
     "La fenêtre qui est en premier plan ne peut pas être lue automatiquement. Choisissez et copiez le texte",
     "Das Fenster, das in erstem Plan ist, kann nicht automatisch lauten. Wählen Sie und kopieren den Text",
     "La finestra che è in primo piano non può automaticamente leggersi. Scegliete e copiate il testo"},
    {"Velocidad", "Speed", "Vitesse", "Geschwindigkeit", "Velocità"},
};

TEST(cTxtLengua, EachRowStandsInEachLanguageToTheLetter) {
    const cTxtLengua textos;
    ASSERT_EQ(std::size(kFilas), static_cast<std::size_t>(cTxtLengua::NumFilas));
    for (int i = 0; i < cTxtLengua::NumFilas; ++i) {
        EXPECT_EQ(textos.GetTexto(1034, i), QString::fromUtf8(kFilas[i].espanol));
        EXPECT_EQ(textos.GetTexto(1033, i), QString::fromUtf8(kFilas[i].ingles));
        EXPECT_EQ(textos.GetTexto(1036, i), QString::fromUtf8(kFilas[i].frances));
        EXPECT_EQ(textos.GetTexto(1031, i), QString::fromUtf8(kFilas[i].aleman));
        EXPECT_EQ(textos.GetTexto(1040, i), QString::fromUtf8(kFilas[i].italiano));
    }
}

TEST(cTxtLengua, EveryOtherLanguageGetsEnglishModernSpanishToo) {
    const cTxtLengua textos;
    for (const int lcid : {1033, 1041, 3082, 2057, 0, -1})
        EXPECT_EQ(textos.GetTexto(lcid, 4), QStringLiteral("There is no text to speech")) << lcid;
}

TEST(cTxtLengua, ARowOutsideTheTableIsEmpty) {
    const cTxtLengua textos;
    for (const int fila : {-1, 12, 1000}) EXPECT_TRUE(textos.GetTexto(1034, fila).isEmpty()) << fila;
}

}  // namespace
}  // namespace ondalis
