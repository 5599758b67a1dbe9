#pragma once

#include <QFrame>
#include <QStringList>

/// Says above the pages what is missing in them; it can be read in full and closed, and never holds up the
/// work.
class NoteBar : public QFrame {
public:
    explicit NoteBar(const QStringList &notes, QWidget *parent = nullptr);
};
