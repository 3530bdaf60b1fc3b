#include "desktop/cPunteroQt.h"

#include <gtest/gtest.h>

#include <QCursor>
#include <QGuiApplication>

namespace ondalis {
namespace {

TEST(cPunteroQt, TheHourglassStandsAsLongAsItsCursorAndGoesWithIt) {
    cPunteroQt puntero;
    cCola cola;
    {
        cCursor fuera(puntero, cola);
        fuera.SetPuntero(cCursor::RelojDeArena);
        ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
        EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
        {
            cCursor dentro(puntero, cola);
            dentro.SetPuntero(cCursor::RelojDeArena);
        }
        EXPECT_EQ(puntero.Puntero(), cCursor::RelojDeArena);
    }
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(puntero.Puntero(), 0);
}

}  // namespace
}  // namespace ondalis
