#pragma once

#include <QColor>
#include <QPalette>

/// What a colour tells. None tells anything that a sign or a word does not tell too.
enum class Signal {
    Wrong,  ///< ended, refused, missing, not possible
    Soon,   ///< wants attention: ends before long, will be left out
    Changed ///< not as it was
};

/// The colour of texts and shapes that stand on the palette's base, dark or light.
QColor signalInk(Signal signal, const QPalette &palette);

/// The ground of a cell, through which the palette's base is seen, so that its texts stay readable.
QColor signalTint(Signal signal);
