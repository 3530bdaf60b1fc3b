// A small page of every kind of control, with a table of its own.
#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QRadioButton>
#include <QSlider>

#include "fakes/RegistroPropio.h"
#include "settings/Catalogo.h"
#include "settings/pagina/EnlaceControles.h"
#include "settings/pagina/PaginaOpciones.h"
#include "settings/pagina/cCajaNumero.h"
#include "settings/pagina/cDeslizador.h"

namespace ondalis::prueba {

inline constexpr FilaOpcion kFilasFalsas[] = {
    FilaDe("CheckGrabar", "Grabar", "GrabarTexto"),
    FilaDe("NomFichero", "Grabar", "NombreFichero", "/x/Lectura.wav"),
    FilaDe("OpcionAnadir", "Grabar", "AnadirFich"),
    FilaDe("OpcionSobrescribir", "Grabar", "SobrescribirFich"),
    FilaDe("CombokHz", "Grabar", "CalidadkHz"),
    FilaDe("ModPausa", "Teclas", "ModPausa"),
    FilaDe("ComboVoces", "Voz", "VozActiva"),
    FilaDe("SaltoAvanzar", "Teclas", "NroPalAvance"),
    FilaDe("ValorMiniTexto", "TipoLectura", "CharsMiniTexto"),
};

class TablaFalsa : public TablaOpciones {
public:
    TablaFalsa(cRegistro &registro, cLog &log)
        : TablaOpciones(kFilasFalsas, registro, log, QStringLiteral("ucOpcFalsa")) {
        CargaFilas();
    }
    void GuardaValores() { SalvaFilas(); }
};

class PaginaFalsa : public PaginaOpciones {
public:
    explicit PaginaFalsa(TablaFalsa &tabla, const char *nombre = "FrameFalso")
        : PaginaOpciones(nombre, &tabla), m_tabla(tabla) {
        auto *columna = new QFormLayout(this);
        const auto pon = [&](QWidget *control, const char *suyo) {
            control->setObjectName(QLatin1String(suyo));
            control->setAccessibleName(QLatin1String(suyo));
            columna->addRow(QLatin1String(suyo), control);
        };
        pon(grabar = new QCheckBox, "CheckGrabar");
        pon(fichero = new QLineEdit(QStringLiteral("/x/Lectura.wav")), "NomFichero");
        pon(anadir = new QRadioButton, "OpcionAnadir");
        pon(sobrescribir = new QRadioButton, "OpcionSobrescribir");
        sobrescribir->setChecked(true);
        pon(ritmo = new QComboBox, "CombokHz");
        for (const int hercios : {8000, 11025, 16000}) ritmo->addItem(QString::number(hercios / 1000), hercios);
        ritmo->setCurrentIndex(1);
        SetFormaLista(*ritmo, FormaLista::Dato);
        pon(modo = new QComboBox, "ModPausa");
        modo->addItems({QStringLiteral("Control"), QStringLiteral("Alt"), QStringLiteral("Shift")});
        pon(voz = new QComboBox, "ComboVoces");
        voz->addItems({QStringLiteral("Carlos"), QStringLiteral("Diana")});
        SetFormaLista(*voz, FormaLista::Texto);
        salto = new cDeslizador("SaltoAvanzar", "ValorAvanzar", QStringLiteral("Nº de palabras"));
        salto->SetRango(1, 100, 5);
        salto->SetValor(10);
        columna->addRow(salto);
        mini = new cCajaNumero("ValorMiniTexto", QStringLiteral("No leer texto inferior a"));
        mini->setRange(0, 1000);
        mini->setValue(15);
        columna->addRow(mini);
        connect(grabar, &QCheckBox::toggled, this, [this] { Habilita(); });
    }

    QCheckBox *grabar;
    QLineEdit *fichero;
    QRadioButton *anadir, *sobrescribir;
    QComboBox *ritmo, *modo, *voz;
    cDeslizador *salto;
    cCajaNumero *mini;

protected:
    void Salva() override { m_tabla.GuardaValores(); }
    void Habilita() override { fichero->setEnabled(grabar->isChecked()); }

private:
    TablaFalsa &m_tabla;
};

}  // namespace ondalis::prueba
