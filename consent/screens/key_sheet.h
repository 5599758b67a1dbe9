#pragma once

#include "print/grid_print/grid_layout.h"

class QWidget;

/// The keys of the list as a table for one sheet: those of its commands, of its inputs and of its grid.
GridDocument keySheet(const QWidget &list);
