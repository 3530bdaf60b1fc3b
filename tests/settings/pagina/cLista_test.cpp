#include "settings/pagina/cLista.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QVBoxLayout>

namespace ondalis {
namespace {

QList<QLabel *> LetrerosDe(const QWidget &pagina, const QWidget *lista) {
    QList<QLabel *> suyos;
    for (QLabel *letrero : pagina.findChildren<QLabel *>())
        if (letrero->buddy() == lista) suyos << letrero;
    return suyos;
}

TEST(cLista, AListWithoutALabelGetsOneOutOfSightThatTellsItApart) {
    QWidget pagina;
    auto *disposicion = new QVBoxLayout(&pagina);
    auto *lista = new cLista("TeclaPausa", QStringLiteral("Tecla de Pausa / Reanudar"));
    disposicion->addWidget(lista);
    pagina.show();
    const auto letreros = LetrerosDe(pagina, lista);
    ASSERT_EQ(letreros.size(), 1);
    EXPECT_EQ(letreros.front()->text(), QStringLiteral("Tecla de Pausa / Reanudar"));
    EXPECT_FALSE(letreros.front()->isVisible());
}

TEST(cLista, AListWithALabelInSightGetsNoOther) {
    QWidget pagina;
    auto *disposicion = new QVBoxLayout(&pagina);
    auto *lista = new cLista("ModPausa", QStringLiteral("Modificador de Pausa / Reanudar"));
    auto *letrero = new QLabel(QStringLiteral("Pausa / Reanudar"));
    letrero->setBuddy(lista);
    disposicion->addWidget(letrero);
    disposicion->addWidget(lista);
    pagina.show();
    EXPECT_EQ(LetrerosDe(pagina, lista), QList<QLabel *>{letrero});
}

}  // namespace
}  // namespace ondalis
