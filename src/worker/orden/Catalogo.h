// Finds the command engines of the machine: reads the descriptions of the data folders and keeps the voices whose
// program and files are there. Starts no program. Worker's only thread.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "engine/Protocolo.h"
#include "worker/orden/Descripcion.h"

namespace ondalis {

struct MotorDescrito {
    Descripcion descripcion;
    std::string programa;         // absolute
    std::vector<VozOrden> voces;  // those that can be spoken with, model files among them
};

// By engine name.
using CatalogoOrden = std::map<std::string, MotorDescrito>;

// Where descriptions lie; of one file name the first folder's counts. ONDALIS_MOTORES (absolute, separated by ":")
// replaces the user's data folder and the installed one, which is seen from this very program.
std::vector<std::string> CarpetasDeMotores();
// The user's data folder of the program: what "{datos}" stands for.
std::string CarpetaDatos();

// What is told of a file that can't be used.
using QuejaCatalogo = std::function<void(const std::string &fichero, const std::string &motivo)>;

// A file that can't be used gives a complaint and no voice.
CatalogoOrden LeeCatalogo(const std::vector<std::string> &carpetas, const QuejaCatalogo &queja);

// As the reader's list wants them, ordered by engine.
std::vector<TramaVoz> TramasDe(const CatalogoOrden &catalogo);

// "sample_rate" of a model's companion file, 0 if it tells none.
std::uint32_t HerciosDeModelo(const std::string &fichero);

}  // namespace ondalis
