// The session's ports as tests see them: each writes its calls into the diary and answers as it was told.
#pragma once

#include <functional>

#include "fakes/Diario.h"
#include "reader/Puertos.h"

namespace ondalis::prueba {

inline QString SiNo(bool valor) { return valor ? QStringLiteral("si") : QStringLiteral("no"); }

class EnlaceWordFalso : public EnlaceWord {
public:
    explicit EnlaceWordFalso(Diario &diario) : m_diario(diario) {}
    bool EnPrimerPlano() override { return enPrimerPlano; }
    bool SeleccionaTexto() override {
        m_diario.Anota(QStringLiteral("word.SeleccionaTexto"));
        return selecciona;
    }
    void LocalizaTexto(const QString &texto, bool marca, int salto, const QString &palabra) override {
        m_diario.Anota(
            QStringLiteral("word.LocalizaTexto(%1,%2,%3,%4)").arg(texto, SiNo(marca)).arg(salto).arg(palabra));
    }
    bool Conecta() override {
        m_diario.Anota(QStringLiteral("word.Conecta"));
        return enPrimerPlano;
    }
    void LocalizaPalabra(const QString &texto, bool marca, bool wrap) override {
        m_diario.Anota(QStringLiteral("word.LocalizaPalabra(%1,%2,%3)").arg(texto, SiNo(marca), SiNo(wrap)));
    }
    void Desconecta() override { m_diario.Anota(QStringLiteral("word.Desconecta")); }

    bool enPrimerPlano = false;
    bool selecciona = true;

private:
    Diario &m_diario;
};

class EnlaceExplorerFalso : public EnlaceExplorer {
public:
    explicit EnlaceExplorerFalso(Diario &diario) : m_diario(diario) {}
    bool EnPrimerPlano() override {
        m_diario.Anota(QStringLiteral("explorer.EnPrimerPlano"));
        return enPrimerPlano;
    }
    bool SeleccionaTexto() override {
        m_diario.Anota(QStringLiteral("explorer.SeleccionaTexto"));
        return selecciona;
    }

    bool enPrimerPlano = false;
    bool selecciona = true;

private:
    Diario &m_diario;
};

class VentanaEnFocoFalsa : public VentanaEnFoco {
public:
    bool EsConsola() override { return consola; }
    std::uint32_t Ventana() override {
        ++preguntas;
        return ventana;
    }
    bool consola = false;
    std::uint32_t ventana = 1;
    int preguntas = 0;  // for the window
};

class GrabadoraFalsa : public Grabadora {
public:
    explicit GrabadoraFalsa(Diario &diario) : m_diario(diario) {}
    void GrabaEnFichero(const QString &texto, const QString &fichero, const OpcionesGrabacion *) override {
        m_diario.Anota(QStringLiteral("graba(%1,%2)").arg(texto, fichero));
    }
    void EstableceNroFichero() override { m_diario.Anota(QStringLiteral("graba.EstableceNroFichero")); }

private:
    Diario &m_diario;
};

class EditorFalso : public VentanaEditor {
public:
    explicit EditorFalso(Diario &diario) : m_diario(diario) {}
    void LocalizaPalabra(int posicion) override {
        m_diario.Anota(QStringLiteral("editor.LocalizaPalabra(%1)").arg(posicion));
    }
    void HabilitaBoton(const QString &boton, bool habilitado) override {
        m_diario.Anota(QStringLiteral("editor.%1=%2").arg(boton, SiNo(habilitado)));
    }
    void RotulaPausa(const QString &enBoton, const QString &enMenu) override {
        m_diario.Anota(QStringLiteral("editor.RotulaPausa(%1,%2)").arg(enBoton, enMenu));
    }

private:
    Diario &m_diario;
};

class IconoFalso : public cIconoBarra {
public:
    explicit IconoFalso(Diario &diario) : m_diario(diario) {}
    void SetImagen(int numero) override {
        m_diario.Anota(QStringLiteral("icono.%1").arg(numero));
        imagen = numero;
    }
    int imagen = 0;

private:
    Diario &m_diario;
};

class VentanasFalsas : public Ventanas {
public:
    explicit VentanasFalsas(Diario &diario) : m_diario(diario) {}
    void Opciones() override {
        m_diario.Anota(QStringLiteral("ventanas.Opciones"));
        if (alPedirOpciones) alPedirOpciones();
    }
    std::function<void()> alPedirOpciones;
    void AbrirEditor() override { m_diario.Anota(QStringLiteral("ventanas.AbrirEditor")); }
    void Aviso() override { m_diario.Anota(QStringLiteral("ventanas.Aviso")); }
    void Salir() override { m_diario.Anota(QStringLiteral("ventanas.Salir")); }
    void MuestraLupa() override { m_diario.Anota(QStringLiteral("ventanas.MuestraLupa")); }
    void DescargaLupa() override { m_diario.Anota(QStringLiteral("ventanas.DescargaLupa")); }
    void DescargaFormularios() override { m_diario.Anota(QStringLiteral("ventanas.DescargaFormularios")); }

private:
    Diario &m_diario;
};

}  // namespace ondalis::prueba
