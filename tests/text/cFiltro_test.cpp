#include "text/cFiltro.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "libs/ondalis_dicc.h"

namespace ondalis {
namespace {

class cFiltroTest : public testing::Test {
protected:
    void SetUp() override { LiberaMemDicc(); }
    void TearDown() override { LiberaMemDicc(); }

    void Entrada(const char *clave, const char *conversion) { AddConversionDicc(clave, conversion); }
    QString Signos(QString texto) {
        m_filtro.TrataSignosPuntuacion(texto);
        return texto;
    }
    QString Conversiones(QString texto) {
        m_filtro.TrataConversionesDiccionario(texto);
        return texto;
    }
    QString Log() {
        QFile fichero(m_log.Fichero());
        return fichero.open(QIODevice::ReadOnly) ? QString::fromUtf8(fichero.readAll()) : QString();
    }

    QTemporaryDir m_carpeta;
    cLog m_log{m_carpeta.path() + QStringLiteral("/Ondalis.log")};
    cFiltro m_filtro{m_log};
};

// --- signs

TEST_F(cFiltroTest, ACommaWithABlankBehindItComesOutWithThreeBlanksOnEitherSide) {
    EXPECT_EQ(QStringLiteral("uno   ,   dos"), Signos(QStringLiteral("uno, dos")));
}

TEST_F(cFiltroTest, EverySignStandsBetweenThreeBlanksAndTwo) {
    for (const QChar signo : QStringLiteral(",.;:¿?¡!()\""))
        EXPECT_EQ(QStringLiteral("a   %1  b").arg(signo), Signos(QStringLiteral("a%1b").arg(signo)));
}

TEST_F(cFiltroTest, OtherSignsAreLeftAlone) {
    const QString texto = QStringLiteral("a-b_c'd/e\\f[g]{h}<i>«j»…\t\n");
    EXPECT_EQ(texto, Signos(texto));
}

TEST_F(cFiltroTest, SignsInARowEachGetTheirBlanks) {
    EXPECT_EQ(QStringLiteral("   .     .     .  "), Signos(QStringLiteral("...")));
    EXPECT_EQ(QStringLiteral("   ¿     ¡  eh   !     ?  "), Signos(QStringLiteral("¿¡eh!?")));
}

TEST_F(cFiltroTest, AnEmptyTextStaysEmpty) {
    EXPECT_EQ(QString(), Signos(QString()));
    EXPECT_EQ(QString(), Conversiones(QString()));
    EXPECT_EQ(QString(), m_filtro.Leido2Copiado(QString(), QString(), true));
    EXPECT_EQ(QString(), m_filtro.PalabraLeido2Copiado(QString(), QString(), true));
}

// --- back

TEST_F(cFiltroTest, TheReversePassTurnsTheSpacedCommaBackIntoACommaAndOneBlank) {
    EXPECT_EQ(QStringLiteral("uno, dos"), m_filtro.Leido2Copiado(QStringLiteral("uno   ,   dos"), QString(), true));
}

TEST_F(cFiltroTest, TheReversePassUndoesTheForwardOneForEverySign) {
    const QString texto = QStringLiteral("¿Sí? ¡No! (a; b: c), d. e");
    EXPECT_EQ(texto, m_filtro.Leido2Copiado(Signos(texto), QString(), true));
}

TEST_F(cFiltroTest, ASpacedFormThatTheUserTypedComesBackAsTheBareSignToo) {
    EXPECT_EQ(QStringLiteral("a.b"), m_filtro.Leido2Copiado(QStringLiteral("a   .  b"), QString(), true));
}

TEST_F(cFiltroTest, WithoutSpokenSignsSpacedFormsStay) {
    EXPECT_EQ(QStringLiteral("a   .  b"), m_filtro.Leido2Copiado(QStringLiteral("a   .  b"), QString(), false));
}

TEST_F(cFiltroTest, AQuoteComesBackDoubled) {
    EXPECT_EQ(QStringLiteral("di \"\"hola\"\" ya"),
              m_filtro.Leido2Copiado(QStringLiteral("di \"hola\" ya"), QString(), false));
    EXPECT_EQ(QStringLiteral("di\"\"hola"), m_filtro.Leido2Copiado(QStringLiteral("di   \"  hola"), QString(), true));
}

TEST_F(cFiltroTest, AConversionIsUndoneOnlyBehindFiveBlanks) {
    Entrada("Dr", "doctor");
    EXPECT_EQ(QStringLiteral("elDr X"), m_filtro.Leido2Copiado(QStringLiteral("el     doctor X"), QString(), false));
    EXPECT_EQ(QStringLiteral("el doctor X"), m_filtro.Leido2Copiado(QStringLiteral("el doctor X"), QString(), false));
    EXPECT_EQ(QStringLiteral("el    doctor X"),
              m_filtro.Leido2Copiado(QStringLiteral("el    doctor X"), QString(), false));
}

TEST_F(cFiltroTest, AWordOfTheDictionaryUsuallyStaysInItsConvertedForm) {
    Entrada("Dr", "doctor");
    EXPECT_EQ(QStringLiteral("el  doctor"),
              m_filtro.Leido2Copiado(Conversiones(QStringLiteral("el Dr")), QString(), true));
}

TEST_F(cFiltroTest, TheReverseWalkOfTheDictionaryKeepsItsOrder) {
    Entrada("a", "x");
    Entrada("b     y", "z");
    Entrada("c", "y");
    // The first entry's key makes no new five blanks, the second's does, for the third.
    EXPECT_EQ(QStringLiteral("abc"), m_filtro.Leido2Copiado(QStringLiteral("     x     z"), QString(), false));
}

TEST_F(cFiltroTest, AnEmptyConversionIsUndoneFromTheFiveBlanksAlone) {
    Entrada("nada", "");
    EXPECT_EQ(QStringLiteral("anadab"), m_filtro.Leido2Copiado(QStringLiteral("a     b"), QString(), false));
}

TEST_F(cFiltroTest, TheMarkIsReplacedOnlyByAMarkerThatIsNotEmpty) {
    m_filtro.SetMarca(QStringLiteral("\\Mrk=1\\"));
    EXPECT_EQ(QStringLiteral("a\\Mrk=1\\b"), m_filtro.Leido2Copiado(QStringLiteral("a\\Mrk=1\\b"), QString(), false));
    EXPECT_EQ(QStringLiteral("a#b"), m_filtro.Leido2Copiado(QStringLiteral("a\\Mrk=1\\b"), QStringLiteral("#"), false));
}

TEST_F(cFiltroTest, WithoutAMarkTheMarkerChangesNothing) {
    EXPECT_EQ(QStringLiteral("ab"), m_filtro.Leido2Copiado(QStringLiteral("ab"), QStringLiteral("#"), false));
}

TEST_F(cFiltroTest, TheArgumentsOfTheReversePassStayAsTheyAre) {
    const QString leido = QStringLiteral("a   ,  \"b\""), copia = leido;
    m_filtro.Leido2Copiado(leido, QString(), true);
    m_filtro.PalabraLeido2Copiado(leido, QString(), true);
    EXPECT_EQ(copia, leido);
}

// --- one word back

TEST_F(cFiltroTest, TheFirstWordOfAFragmentComesBack) {
    EXPECT_EQ(QStringLiteral("uno,"), m_filtro.PalabraLeido2Copiado(QStringLiteral("uno   ,   dos"), QString(), true));
    EXPECT_EQ(QStringLiteral("uno"), m_filtro.PalabraLeido2Copiado(QStringLiteral("uno dos"), QString(), false));
}

TEST_F(cFiltroTest, AWordWithoutBlanksComesBackUntreatedWithItsQuotesSingle) {
    EXPECT_EQ(QStringLiteral("\"hola\""), m_filtro.PalabraLeido2Copiado(QStringLiteral("\"hola\""), QString(), false));
}

TEST_F(cFiltroTest, AFragmentThatBeginsWithABlankComesBackWhole) {
    const QString leido = QStringLiteral(" uno \"dos\"");
    EXPECT_EQ(leido, m_filtro.PalabraLeido2Copiado(leido, QString(), false));
}

TEST_F(cFiltroTest, AQuoteInTheFirstWordOfSeveralIsDoubled) {
    EXPECT_EQ(QStringLiteral("\"\"hola\"\""),
              m_filtro.PalabraLeido2Copiado(QStringLiteral("\"hola\" ya"), QString(), false));
}

// --- dictionary

TEST_F(cFiltroTest, WithAnEmptyDictionaryTheTextIsUnchanged) {
    EXPECT_EQ(QStringLiteral("uno dos"), Conversiones(QStringLiteral("uno dos")));
}

TEST_F(cFiltroTest, AnEntryThatBeginsALongerWordChangesThatWordToo) {
    Entrada("casa", "hogar");
    EXPECT_EQ(QStringLiteral("la  hogardo y la  hogar"), Conversiones(QStringLiteral("la casado y la casa")));
}

TEST_F(cFiltroTest, TheMatchIsBlindNeitherToCaseNorToAccents) {
    Entrada("mas", "x");
    EXPECT_EQ(QStringLiteral("Mas más  x"), Conversiones(QStringLiteral("Mas más mas")));
}

TEST_F(cFiltroTest, AnEntryActsOnWhatAnEarlierOneProduced) {
    Entrada("Dr", "doctor");
    Entrada("doctor", "médico");
    EXPECT_EQ(QStringLiteral("  médico"), Conversiones(QStringLiteral("Dr")));
}

TEST_F(cFiltroTest, AnEntryDoesNotActOnWhatALaterOneProduced) {
    Entrada("doctor", "médico");
    Entrada("Dr", "doctor");
    EXPECT_EQ(QStringLiteral(" doctor"), Conversiones(QStringLiteral("Dr")));
}

TEST_F(cFiltroTest, AKeyIsFoundAcrossTheBorderOfOldAndInsertedText) {
    Entrada("b", "q");
    Entrada("a q", "1");
    Entrada("1c", "2");
    EXPECT_EQ(QStringLiteral("  2"), Conversiones(QStringLiteral("abc")));
}

TEST_F(cFiltroTest, AnEntryIsNotAppliedToItsOwnConversion) {
    Entrada("a", "aa");
    EXPECT_EQ(QStringLiteral(" aa aa"), Conversiones(QStringLiteral("aa")));
}

TEST_F(cFiltroTest, AnEarlierEntryTakesTheTextFromALaterOne) {
    Entrada("ab", "x");
    Entrada("bc", "y");
    EXPECT_EQ(QStringLiteral(" xc"), Conversiones(QStringLiteral("abc")));
}

TEST_F(cFiltroTest, OccurrencesThatOverlapAreTakenFromTheLeft) {
    Entrada("aa", "x");
    EXPECT_EQ(QStringLiteral(" xa"), Conversiones(QStringLiteral("aaa")));
}

TEST_F(cFiltroTest, AnEmptyConversionLeavesTheBlank) {
    Entrada("quita", "");
    EXPECT_EQ(QStringLiteral("a  b"), Conversiones(QStringLiteral("aquita b")));
}

TEST_F(cFiltroTest, CharactersOutsideTheBasicPlaneAreFoundAndGiven) {
    Entrada("\xF0\x9F\x98\x80", "cara \xF0\x9F\x98\x81");
    EXPECT_EQ(QStringLiteral("a cara \U0001F601b\U0001F602"), Conversiones(QStringLiteral("a\U0001F600b\U0001F602")));
}

TEST_F(cFiltroTest, ATextJustUnder1024BytesIsFoundWholeAndALongerOneNeverWas) {
    const QByteArray cabe(1023, 'x'), noCabe(1024, 'y');
    Entrada(cabe.constData(), "largo");
    Entrada(noCabe.constData(), "nunca");
    EXPECT_EQ(QStringLiteral(" largo"), Conversiones(QString::fromUtf8(cabe)));
    EXPECT_EQ(QString::fromUtf8(noCabe), Conversiones(QString::fromUtf8(noCabe)));
}

TEST_F(cFiltroTest, AChangeOfTheTableActsAtTheNextReading) {
    Entrada("a", "1");
    EXPECT_EQ(QStringLiteral(" 1b"), Conversiones(QStringLiteral("ab")));
    Entrada("b", "2");
    EXPECT_EQ(QStringLiteral(" 1 2"), Conversiones(QStringLiteral("ab")));
    Entrada("a", "3");
    EXPECT_EQ(QStringLiteral(" 3 2"), Conversiones(QStringLiteral("ab")));
    LiberaMemDicc();
    EXPECT_EQ(QStringLiteral("ab"), Conversiones(QStringLiteral("ab")));
}

// --- failure

TEST_F(cFiltroTest, EntriesThatMakeTheTextGrowWithoutEndStopAtTheFailingPassWithOneLogLine) {
    const QByteArray b(1000, 'b'), c(1000, 'c'), d(1000, 'd');
    Entrada("a", b.constData());
    Entrada("b", c.constData());
    Entrada("c", d.constData());
    Entrada("z", "w");
    const QString texto = Conversiones(QStringLiteral("az"));
    EXPECT_EQ(1 + 1000 * 1001 + 1, texto.size());
    EXPECT_EQ(1000 * 1000, texto.count(QLatin1Char('c')));
    EXPECT_TRUE(Log().contains(QStringLiteral(" cFiltro.TrataConversionesDiccionario: Memoria insuficiente (7)\n")))
        << Log().toStdString();
    EXPECT_EQ(1, Log().count(QLatin1Char('\n')));
}

TEST_F(cFiltroTest, SignsThatWouldMakeTheTextTooLongAreLeftAsTheyAreWithOneLogLine) {
    const QString texto(6 * 1024 * 1024, QLatin1Char(','));
    EXPECT_EQ(texto, Signos(texto));
    EXPECT_TRUE(Log().contains(QStringLiteral(" cFiltro.TrataSignosPuntuacion: Memoria insuficiente (7)\n")))
        << Log().toStdString();
}

TEST_F(cFiltroTest, SuccessLeavesNoLine) {
    Entrada("a", "b");
    Signos(Conversiones(QStringLiteral("a, b")));
    m_filtro.PalabraLeido2Copiado(QStringLiteral("a b"), QString(), true);
    EXPECT_EQ(QString(), Log());
}

}  // namespace
}  // namespace ondalis
