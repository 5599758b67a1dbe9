#pragma once

#include <QWidget>
#include <array>

class QCheckBox;
class QGridLayout;

/// The outline of a body seen from the front, with what the ticks around it say.
class BodyFigure : public QWidget {
public:
    explicit BodyFigure(QWidget *parent = nullptr);

    /// Trunk, right and left upper limb, right and left lower limb.
    using Parts = std::array<bool, 5>;
    /// Right shoulder, elbow, wrist, hip, knee, ankle, then left.
    using Joints = std::array<bool, 12>;
    void setMarks(const Parts &treated, const Parts &paralysed, const Joints &stiff);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    Parts m_treated{};
    Parts m_paralysed{};
    Joints m_stiff{};
};

/// The ticks for body parts treated, paralysis and contracture, laid out round a body as it faces the reader:
/// its right side stands at the left. Every tick bears the name of its column.
class BodyPanel : public QWidget {
public:
    explicit BodyPanel(QWidget *parent = nullptr);

    /// A deformity correction is of limbs only.
    void setLimbsOnly(bool limbsOnly);

private:
    QCheckBox *tick(QStringView column, const QString &caption);
    void addSide(QGridLayout &grid, bool right);
    void addTrunk(QGridLayout &grid);
    void addOthers(QGridLayout &grid);
    void orderFocus();
    void showFigure();

    BodyFigure *m_figure;
    std::array<QCheckBox *, 5> m_treated{};
    std::array<QCheckBox *, 5> m_paralysed{};
    std::array<QCheckBox *, 12> m_stiff{};
};
