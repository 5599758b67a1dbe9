#pragma once

class QAbstractButton;

/// Shows a button as the chosen one of several, or as one of the others, in the colours of a selection: a
/// style's own mark for a checked button is hardly seen on a dark window.
void showChosen(QAbstractButton &button, bool chosen);
