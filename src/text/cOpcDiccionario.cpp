#include "text/cOpcDiccionario.h"

#include <QFile>
#include <array>

#include "libs/ondalis_dicc.h"

namespace ondalis {

namespace {

using Bufer = std::array<char, ONDALIS_DICC_TAM>;

const QString kNombreFichero = QStringLiteral("/diccionario.dat");

// What stands behind the text's end are zeros, and no NUL belongs to a text.
QString DeBufer(const Bufer &bufer) {
    return QString::fromUtf8(bufer.data(), static_cast<qsizetype>(qstrnlen(bufer.data(), bufer.size())));
}

}  // namespace

cOpcDiccionario::cOpcDiccionario(cGeneral &general, const QString &carpeta)
    : m_general(general), m_fichero(QFile::encodeName(carpeta + kNombreFichero)) {
    const QString fichero = carpeta + kNombreFichero;
    const bool hay = cGeneral::ExisteFichero(fichero);
    if (CargaDicc(m_fichero.constData()) != 1 && hay)
        m_general.Log().Escribe(QStringLiteral("ucOpcDiccionario.UserControl_ReadProperties: "),
                                Fallo::De(Fallo::ErrorDeAcceso), fichero);
}

cOpcDiccionario::~cOpcDiccionario() { LiberaMemDicc(); }

void cOpcDiccionario::CargaLista(cListaDiccionario &lista) {
    m_general.Ejecuta(QStringLiteral("ucOpcDiccionario.CargaLista: "), cGeneral::Aviso::SoloLog, [&lista] {
        Bufer clave{}, conversion{};
        PrimeraPosicionDicc();
        lista.Carga([&](QString &suClave, QString &suConversion) {
            if (GetPosicionDicc(clave.data(), conversion.data()) == 0) return false;
            suClave = DeBufer(clave);
            suConversion = DeBufer(conversion);
            clave.fill(0);
            conversion.fill(0);
            SigPosicionDicc();
            return true;
        });
    });
}

void cOpcDiccionario::GuardaValores(const cListaDiccionario &lista) {
    const QString procedimiento = QStringLiteral("ucOpcDiccionario.GuardaValores: ");
    m_general.Ejecuta(procedimiento, cGeneral::Aviso::SoloLog, [&] {
        LiberaMemDicc();
        for (int i = 0; i < lista.Cuantas(); ++i)
            AddConversionDicc(lista[i].clave.toUtf8().constData(), lista[i].conversion.toUtf8().constData());
        if (GrabaDicc(m_fichero.constData()) != 0) return;
        m_general.Log().Escribe(procedimiento, QStringLiteral("Error al grabar el fichero ") + kNombreFichero);
        CargaDicc(m_fichero.constData());
    });
}

bool cOpcDiccionario::EsEntrada(const QString &clave, const QString &conversion) {
    const auto cabe = [](const QString &texto) { return !texto.isEmpty() && texto.toUtf8().size() < ONDALIS_DICC_TAM; };
    return cabe(clave) && cabe(conversion);
}

}  // namespace ondalis
