#pragma once

#include "print/grid_print/grid_layout.h"

class HandedDocuments;
struct Environment;

/// Shows a grid in the engine's viewer, from where it is printed; asks before and tells what came of it.
/// @param sent takes what is handed over; may be null
/// @return whether it was handed over
bool printGrid(const Environment &environment, const GridDocument &document, HandedDocuments *sent = nullptr);
