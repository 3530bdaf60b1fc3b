// The moments when file, table and rows meet. The table is the process's own; each test begins with an empty one.
#include "text/cOpcDiccionario.h"

#include <gtest/gtest.h>

#include "fakes/DiscoLleno.h"
#include "fakes/MensajesGuion.h"
#include "fakes/PrioridadFalsa.h"
#include "fakes/RegistroPropio.h"
#include "libs/ondalis_dicc.h"
#include "text/cFiltro.h"

namespace ondalis::prueba {
namespace {

class OpcDiccionarioTest : public testing::Test {
protected:
    OpcDiccionarioTest() { LiberaMemDicc(); }
    ~OpcDiccionarioTest() override { LiberaMemDicc(); }

    QString Fichero() const { return r.Ruta("diccionario.dat"); }
    QByteArray Contenido() const {
        QFile fichero(Fichero());
        return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray("absent");
    }
    std::unique_ptr<cOpcDiccionario> Crea() { return std::make_unique<cOpcDiccionario>(general, r.Ruta("")); }
    QString Filtrado(QString texto) {
        filtro.TrataConversionesDiccionario(texto);
        return texto;
    }
    static QStringList Filas(const cListaDiccionario &lista) {
        QStringList filas;
        for (int i = 0; i < lista.Cuantas(); ++i) filas << lista[i].clave + '=' + lista[i].conversion;
        return filas;
    }
    static cListaDiccionario Con(const QStringList &filas) {
        cListaDiccionario lista;
        lista.Ordena();
        for (const QString &fila : filas) lista.Anade(fila.section('=', 0, 0), fila.section('=', 1));
        return lista;
    }

    RegistroPropio r;
    MensajesGuion mensajes;
    PrioridadFalsa prioridad;
    cGeneral general{r.Log(), mensajes, prioridad};
    cFiltro filtro{r.Log()};
};

TEST_F(OpcDiccionarioTest, AFirstRunWithoutAFileIsSilent) {
    const auto diccionario = Crea();
    cListaDiccionario lista;
    diccionario->CargaLista(lista);
    EXPECT_EQ(lista.Cuantas(), 0);
    EXPECT_TRUE(lista.Ordenada());
    EXPECT_TRUE(r.LineasLog().isEmpty());
    EXPECT_EQ(Contenido(), "absent");
    EXPECT_TRUE(mensajes.cajas.empty());
}

TEST_F(OpcDiccionarioTest, TheTableIsThereFromTheCreationOnAndGoesWithIt) {
    RegistroPropio::Escribe(Fichero(), "ondalis-diccionario 1\ngato\tmiau\n");
    auto diccionario = Crea();
    EXPECT_EQ(Filtrado("un gato"), "un  miau");
    diccionario.reset();
    EXPECT_EQ(Filtrado("un gato"), "un gato");
}

TEST_F(OpcDiccionarioTest, AcceptedRowsGovernSpeechInTheListsOrderAndComeBackAtTheNextStart) {
    auto diccionario = Crea();
    diccionario->GuardaValores(Con({"perro=guau", "árbol=planta", "Gato=miau"}));
    EXPECT_EQ(Filtrado("Gato y perro"), " miau y  guau");
    EXPECT_EQ(Contenido(), "ondalis-diccionario 1\nárbol\tplanta\nGato\tmiau\nperro\tguau\n");
    diccionario.reset();
    diccionario = Crea();
    cListaDiccionario lista;
    diccionario->CargaLista(lista);
    EXPECT_EQ(Filas(lista), (QStringList{"árbol=planta", "Gato=miau", "perro=guau"}));
}

TEST_F(OpcDiccionarioTest, AnEmptyListWritesAFileWithNoEntriesAndTheNextStartGivesAnEmptyList) {
    auto diccionario = Crea();
    diccionario->GuardaValores(Con({"a=b"}));
    diccionario->GuardaValores(Con({}));
    EXPECT_EQ(Contenido(), "ondalis-diccionario 1\n");
    diccionario.reset();
    diccionario = Crea();
    cListaDiccionario lista = Con({"a=b"});
    diccionario->CargaLista(lista);
    EXPECT_EQ(lista.Cuantas(), 0);
    EXPECT_TRUE(r.LineasLog().isEmpty());
}

TEST_F(OpcDiccionarioTest, RowsThatWereNotAcceptedAreGoneWithTheNextLoading) {
    const auto diccionario = Crea();
    diccionario->GuardaValores(Con({"a=1", "b=2"}));
    cListaDiccionario lista = Con({"a=1", "b=2"});
    lista.Quita(0);
    lista.Anade("c", "3");
    EXPECT_EQ(Filtrado("a c"), " 1 c") << "the table doesn't know";
    diccionario->CargaLista(lista);
    EXPECT_EQ(Filas(lista), (QStringList{"a=1", "b=2"}));
}

TEST_F(OpcDiccionarioTest, AFullDiskLeavesFileAndTableAsTheyWereAndIsLoggedOnly) {
    const auto diccionario = Crea();
    diccionario->GuardaValores(Con({"a=1"}));
    {
        const DiscoLleno lleno;
        diccionario->GuardaValores(Con({"b=2", "c=3"}));
    }
    EXPECT_EQ(Contenido(), "ondalis-diccionario 1\na\t1\n");
    EXPECT_EQ(Filtrado("a b"), " 1 b");
    EXPECT_TRUE(mensajes.cajas.empty());
    // The log itself could not grow meanwhile; a folder that can't be written has the same road, with its line.
    EXPECT_EQ(QDir(r.Ruta("")).entryList({"diccionario.dat*"}).size(), 1);
}

TEST_F(OpcDiccionarioTest, AFolderThatCannotBeWrittenIsLoggedUnderTheProcedureAndTheTableIsTheFilesAgain) {
    RegistroPropio::Escribe(r.Ruta("fichero"), "x");
    cOpcDiccionario diccionario(general, r.Ruta("fichero"));
    diccionario.GuardaValores(Con({"a=1"}));
    ASSERT_EQ(r.LineasLog().size(), 1);
    EXPECT_TRUE(
        r.LineasLog()[0].endsWith("ucOpcDiccionario.GuardaValores:  [Error al grabar el fichero /diccionario.dat]"))
        << r.LineasLog()[0].toStdString();
    EXPECT_EQ(Filtrado("a"), "a");
    EXPECT_TRUE(mensajes.cajas.empty());
}

TEST_F(OpcDiccionarioTest, ADamagedFileIsKeptAsideLoggedAndNeverOverwritten) {
    RegistroPropio::Escribe(Fichero(), "gato\tmiau\n");
    const auto diccionario = Crea();
    ASSERT_EQ(r.LineasLog().size(), 1);
    EXPECT_TRUE(r.LineasLog()[0].contains("diccionario.dat]"));
    diccionario->GuardaValores(Con({"a=1"}));
    QFile aparte(Fichero() + ".roto");
    ASSERT_TRUE(aparte.open(QIODevice::ReadOnly));
    EXPECT_EQ(aparte.readAll(), "gato\tmiau\n");
    EXPECT_EQ(Contenido(), "ondalis-diccionario 1\na\t1\n");
}

TEST_F(OpcDiccionarioTest, AnEntryHoldsUpToOneThousandAndTwentyThreeBytes) {
    const QString justo(511, QChar(u'ñ'));
    EXPECT_TRUE(cOpcDiccionario::EsEntrada(justo + 'a', "x"));
    EXPECT_FALSE(cOpcDiccionario::EsEntrada(justo + "ab", "x"));
    EXPECT_FALSE(cOpcDiccionario::EsEntrada("x", QString(1024, 'a')));
    EXPECT_FALSE(cOpcDiccionario::EsEntrada("", "x"));
    EXPECT_FALSE(cOpcDiccionario::EsEntrada("x", ""));
    const auto diccionario = Crea();
    diccionario->GuardaValores(Con({justo + "a=" + QString(1023, 'b')}));
    cListaDiccionario lista;
    diccionario->CargaLista(lista);
    EXPECT_EQ(Filas(lista), (QStringList{justo + "a=" + QString(1023, 'b')}));
}

}  // namespace
}  // namespace ondalis::prueba
