#include "reader/Palabras.h"

#include <gtest/gtest.h>

#include "fakes/RegistroPropio.h"
#include "reader/Puertos.h"

namespace ondalis::prueba {

TEST(Palabras, EachUnitBecomesItsWindows1252Byte) {
    EXPECT_EQ(BytesDePalabras(QStringLiteral("añÿ €“Ž")), "a\xF1\xFF \x80\x93\x8E");
}

TEST(Palabras, WhatTheCodePageLacksBecomesAQuestionMarkForEachUnit) {
    EXPECT_EQ(BytesDePalabras(QStringLiteral("日😀b")), "???b");
    EXPECT_EQ(BytesDePalabras(QString(QChar(0x81))), "?");
}

TEST(Palabras, ANulDoesNotEndTheText) {
    EXPECT_EQ(BytesDePalabras(QString(QChar(0)) + QStringLiteral("b")), "?b");
    EXPECT_EQ(BytesDePalabras(QString()), "");
}

TEST(Palabras, OnlyBlanksAreTrimmed) {
    EXPECT_EQ(SinBlancos(QStringLiteral("  a b\t ")), QStringLiteral("a b\t"));
    EXPECT_EQ(SinBlancos(QStringLiteral("   ")), QString());
    EXPECT_EQ(SinBlancos(QStringLiteral("\n ")), QStringLiteral("\n"));
}

TEST(Palabras, ACutKeepsSurrogatePairsWhole) {
    EXPECT_EQ(Primeros(QStringLiteral("ab"), 5), QStringLiteral("ab"));
    EXPECT_EQ(Primeros(QStringLiteral("abc"), 2), QStringLiteral("ab"));
    EXPECT_EQ(Primeros(QStringLiteral("a😀"), 2), QStringLiteral("a"));
    EXPECT_EQ(Primeros(QStringLiteral("😀a"), 2), QStringLiteral("😀"));
    EXPECT_EQ(Primeros(QStringLiteral("a"), 0), QString());
}

TEST(SinVentanas, AWindowThatDoesNotExistLeavesALogLine) {
    RegistroPropio almacen;
    int salidas = 0;
    SinVentanas ventanas(almacen.Log(), [&salidas] { ++salidas; });
    ventanas.Opciones();
    ventanas.AbrirEditor();
    ASSERT_EQ(almacen.LineasLog().size(), 2);
    EXPECT_TRUE(almacen.LineasLog()[0].contains(QStringLiteral("cFormPrincipal.Opciones_Click: ")));
    EXPECT_TRUE(almacen.LineasLog()[1].contains(QStringLiteral("cFormPrincipal.AbrirEditor_Click: ")));
    ventanas.Salir();
    EXPECT_EQ(salidas, 1);
}

}  // namespace ondalis::prueba
