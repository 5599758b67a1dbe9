#pragma once

#include <QLayout>
#include <QList>

/// Lays controls side by side and goes on in a new row where the width ends, so that a window stays usable
/// on a small or magnified screen.
class FlowLayout : public QLayout {
public:
    enum class Widths { Own, Uniform };

    explicit FlowLayout(QWidget *parent, Widths widths = Widths::Own);
    ~FlowLayout() override;

    void addItem(QLayoutItem *item) override { m_items.append(item); }
    int count() const override { return int(m_items.size()); }
    QLayoutItem *itemAt(int index) const override { return m_items.value(index); }
    QLayoutItem *takeAt(int index) override;

    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return arrange(QRect(0, 0, width, 0), Move::No); }
    QSize sizeHint() const override { return minimumSize(); }
    QSize minimumSize() const override;
    void setGeometry(const QRect &rect) override;

private:
    enum class Move { No, Yes };
    /// @return the height taken
    int arrange(const QRect &rect, Move move) const;
    QSize sizeOf(const QLayoutItem &item, int uniform) const;

    QList<QLayoutItem *> m_items; ///< owned
    Widths m_widths;
};
