#include "ctl/Argumentos.h"

#include <gtest/gtest.h>

namespace ondalis::ctl {
namespace {

std::optional<Argumentos> Lee(const QStringList &partes) {
    QString error;
    auto a = Analiza(partes, error);
    EXPECT_EQ(a.has_value(), error.isEmpty());
    return a;
}
QStringList L(std::initializer_list<const char *> partes) {
    QStringList lista;
    for (const char *parte : partes) lista << QString::fromUtf8(parte);
    return lista;
}

TEST(ArgumentosCtl, TheWordsOfATextAreJoinedByOneBlank) {
    const auto a = Lee(L({"habla", "hola", "a  todos"}));
    ASSERT_TRUE(a);
    EXPECT_EQ(a->orden, Argumentos::Orden::Habla);
    EXPECT_EQ(a->valor, QStringLiteral("hola a  todos"));
    EXPECT_FALSE(a->espera);
    EXPECT_EQ(a->plazoMs, -1);
    EXPECT_EQ(Lee(L({"habla", "-"}))->valor, QStringLiteral("-"));
}

TEST(ArgumentosCtl, OptionsStandAnywhereUntilTwoHyphens) {
    const auto a = Lee(L({"habla", "--espera", "--plazo", "1.5", "--", "--espera", "hola"}));
    ASSERT_TRUE(a);
    EXPECT_TRUE(a->espera);
    EXPECT_EQ(a->plazoMs, 1500);
    EXPECT_EQ(a->valor, QStringLiteral("--espera hola"));
    EXPECT_EQ(Lee(L({"--plazo=2", "espera"}))->plazoMs, 2000);
}

TEST(ArgumentosCtl, WrongUseIsTold) {
    for (const QStringList &mal :
         {L({}), L({"canta"}), L({"habla"}), L({"fichero"}), L({"fichero", "a", "b"}), L({"fichero", ""}),
          L({"espera", "x"}), L({"--nada"}), L({"espera", "--plazo"}), L({"espera", "--plazo", "0"}),
          L({"espera", "--plazo=-1"}), L({"espera", "--plazo", "nan"}), L({"espera", "--plazo", "1e99"})})
        EXPECT_FALSE(Lee(mal)) << mal.join(QLatin1Char('|')).toStdString();
}

TEST(ArgumentosCtl, HelpAndVersionWin) {
    EXPECT_EQ(Lee(L({"--ayuda"}))->orden, Argumentos::Orden::Ayuda);
    EXPECT_EQ(Lee(L({"habla", "-h"}))->orden, Argumentos::Orden::Ayuda);
    EXPECT_EQ(Lee(L({"--version"}))->orden, Argumentos::Orden::Version);
}

TEST(ArgumentosCtl, APathIsMadeAbsoluteHyphensAndBlanksIncluded) {
    EXPECT_EQ(ComandoFichero(QStringLiteral("mi libro-1.txt"), QStringLiteral("/home/ana")),
              QStringLiteral("FILETXT /home/ana/mi libro-1.txt"));
    EXPECT_EQ(ComandoFichero(QStringLiteral("../b.txt"), QStringLiteral("/home/ana")),
              QStringLiteral("FILETXT /home/b.txt"));
    EXPECT_EQ(ComandoFichero(QStringLiteral("/x/y.txt"), QStringLiteral("/home/ana")),
              QStringLiteral("FILETXT /x/y.txt"));
}

}  // namespace
}  // namespace ondalis::ctl
