#pragma once

#include "print/grid_print/grid_layout.h"

class ListFilterPanel;
class ListGrid;
struct ListFilter;

/// What limits the rows that are shown, a text each.
QStringList listScope(const ListGrid &grid, const ListFilterPanel &panel, const ListFilter &filter);

/// The order in which the rows are shown.
QString orderText(const ListGrid &grid, const ListFilter &filter);

/// The list as it goes onto paper: what is shown, and by what it was chosen and ordered.
/// @param counts of the rows, in words
GridDocument listDocument(const ListGrid &grid, const ListFilterPanel &panel, const ListFilter &filter,
                          const QString &counts);
