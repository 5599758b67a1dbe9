#include "consent/entry/body_panel.h"

#include "app/desktop/signal_colours.h"
#include "db/tables/patient/consent_words.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView treatedColumns[] = {u"iSejutuBui1", u"iSejutuBui2", u"iSejutuBui3", u"iSejutuBui4",
                                          u"iSejutuBui5"};
constexpr QStringView paralysedColumns[] = {u"iMahiKukan", u"iMahiMigiue", u"iMahiHidariue",
                                            u"iMahiMigishita", u"iMahiHidarishita"};
constexpr QStringView stiffColumns[] = {
    u"iKousyukuMigikata",         u"iKousyukuMigihiji",   u"iKousyukuMigitekubi",
    u"iKousyukuMigikokannsetu",   u"iKousyukuMigihiza",   u"iKousyukuMigiashikubi",
    u"iKousyukuHidarikata",       u"iKousyukuHidarihiji", u"iKousyukuHidaritekubi",
    u"iKousyukuHidarikokannsetu", u"iKousyukuHidarihiza", u"iKousyukuHidariashikubi"};
constexpr QStringView jointNames[] = {u"肩", u"肘", u"手首", u"股関節", u"膝", u"足首"};

// The figure in a square of 100 by 200, its right side at the left.
constexpr QSizeF figureSize(100, 200);
constexpr QPointF joints[] = {{30, 46}, {20, 76}, {12, 104}, {40, 108}, {37, 146}, {35, 184}};

QPointF mirrored(QPointF point, bool right) {
    return right ? point : QPointF(figureSize.width() - point.x(), point.y());
}

QPainterPath limb(std::initializer_list<QPointF> line, qreal width) {
    QPainterPath path(*line.begin());
    for (const QPointF &point : line)
        path.lineTo(point);
    QPainterPathStroker pen;
    pen.setWidth(width);
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    return pen.createStroke(path).simplified();
}

QPainterPath partPath(size_t part) {
    const bool right = part % 2 == 1;
    const auto at = [right](size_t joint) { return mirrored(joints[joint], right); };
    if (part == 0) {
        QPainterPath trunk;
        trunk.addRoundedRect(QRectF(33, 38, 34, 68), 9, 9);
        return trunk;
    }
    return part <= 2 ? limb({at(0), at(1), at(2)}, 12) : limb({at(3), at(4), at(5)}, 15);
}

} // namespace

BodyFigure::BodyFigure(QWidget *parent) : QWidget(parent) {
    setToolTip(u"塗り：施術部位　斜線：麻痺　丸：拘縮"_s);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
}

void BodyFigure::setMarks(const Parts &treated, const Parts &paralysed, const Joints &stiff) {
    m_treated = treated;
    m_paralysed = paralysed;
    m_stiff = stiff;
    update();
}

QSize BodyFigure::sizeHint() const {
    const int high = fontMetrics().height() * 9;
    return {high / 2, high};
}

QSize BodyFigure::minimumSizeHint() const {
    return sizeHint() * 2 / 3;
}

void BodyFigure::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal scale = qMin(width() / figureSize.width(), height() / figureSize.height());
    painter.translate((width() - figureSize.width() * scale) / 2,
                      (height() - figureSize.height() * scale) / 2);
    painter.scale(scale, scale);

    const QColor line = palette().color(QPalette::Mid);
    QColor treated = palette().color(QPalette::Highlight);
    treated.setAlpha(150);
    painter.setPen(QPen(line, 1));
    painter.setBrush(palette().color(QPalette::Base));
    painter.drawEllipse(QPointF(50, 20), 13, 15);
    for (size_t part : {size_t(1), size_t(2), size_t(3), size_t(4), size_t(0)}) {
        const QPainterPath path = partPath(part);
        painter.setBrush(palette().color(QPalette::Base));
        painter.drawPath(path);
        if (m_treated[part])
            painter.fillPath(path, treated);
        if (m_paralysed[part])
            painter.fillPath(path, QBrush(palette().color(QPalette::Text), Qt::BDiagPattern));
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(signalInk(Signal::Wrong, palette()));
    for (size_t joint = 0; joint < m_stiff.size(); ++joint)
        if (m_stiff[joint])
            painter.drawEllipse(mirrored(joints[joint % 6], joint < 6), 5, 5);
}

BodyPanel::BodyPanel(QWidget *parent) : QWidget(parent), m_figure(new BodyFigure(this)) {
    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setVerticalSpacing(grid->verticalSpacing() / 2);
    addSide(*grid, true);
    grid->addWidget(m_figure, 0, 2, 6, 1);
    grid->setColumnStretch(2, 1);
    for (int row = 1; row < 7; ++row)
        grid->setRowStretch(row, 1);
    addSide(*grid, false);
    addTrunk(*grid);
    addOthers(*grid);
    orderFocus();
}

QCheckBox *BodyPanel::tick(QStringView column, const QString &caption) {
    const QString whole = consentCaption(column);
    auto *box = new QCheckBox(caption, this);
    box->setObjectName(column.toString());
    box->setToolTip(whole);
    box->setAccessibleName(whole);
    connect(box, &QCheckBox::toggled, this, [this] { showFigure(); });
    return box;
}

void BodyPanel::addSide(QGridLayout &grid, bool right) {
    const QString side = right ? u"右"_s : u"左"_s;
    const int limbColumn = right ? 0 : 4;
    const int jointColumn = right ? 1 : 3;
    const auto heading = [&](const QString &text, int row, int column) {
        auto *label = new QLabel(u"<b>%1</b>"_s.arg(text), this);
        label->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
        grid.addWidget(label, row, column);
    };
    heading(side + u"　拘縮"_s, 0, jointColumn);
    for (size_t joint = 0; joint < 6; ++joint) {
        const size_t at = right ? joint : joint + 6;
        m_stiff[at] = tick(stiffColumns[at], jointNames[joint].toString());
        grid.addWidget(m_stiff[at], int(joint) + 1, jointColumn);
    }
    for (const bool upper : {true, false}) {
        const size_t part = (upper ? 1u : 3u) + (right ? 0u : 1u);
        const QString name = side + (upper ? u"上肢"_s : u"下肢"_s);
        const int row = upper ? 1 : 4;
        heading(name, row, limbColumn);
        m_treated[part] = tick(treatedColumns[part], u"施術"_s);
        m_paralysed[part] = tick(paralysedColumns[part], u"麻痺"_s);
        grid.addWidget(m_treated[part], row + 1, limbColumn);
        grid.addWidget(m_paralysed[part], row + 2, limbColumn);
    }
}

void BodyPanel::addTrunk(QGridLayout &grid) {
    auto *row = new QHBoxLayout;
    row->setSpacing(fontMetrics().horizontalAdvance(u'国'));
    m_treated[0] = tick(treatedColumns[0], u"施術"_s);
    m_paralysed[0] = tick(paralysedColumns[0], u"麻痺"_s);
    row->addStretch();
    row->addWidget(new QLabel(u"<b>躯幹</b>"_s, this));
    row->addWidget(m_treated[0]);
    row->addWidget(m_paralysed[0]);
    row->addStretch();
    grid.addLayout(row, 6, 2);
}

void BodyPanel::addOthers(QGridLayout &grid) {
    const auto line = [this](const QString &name) {
        auto *box = new QLineEdit(this);
        box->setObjectName(name);
        return box;
    };
    auto *row = new QHBoxLayout;
    row->setSpacing(fontMetrics().horizontalAdvance(u'国'));
    auto *symptom = new QLabel(u"症状 その他(&X)"_s, this);
    row->addWidget(tick(u"iKousyukuSonota", u"拘縮 その他"_s));
    QLineEdit *stiff = line(u"cKousyukuSonotaStr"_s);
    stiff->setAccessibleName(consentCaption(u"cKousyukuSonotaStr"));
    row->addWidget(stiff, 1);
    QLineEdit *other = line(u"cSyoujyouSonotaStr"_s);
    symptom->setBuddy(other);
    row->addWidget(symptom);
    row->addWidget(other, 1);
    grid.addLayout(row, 7, 0, 1, 5);
}

// As one reads: the limbs and joints of the right, those of the left, the trunk.
void BodyPanel::orderFocus() {
    QList<QWidget *> order;
    for (const size_t side : {size_t(0), size_t(1)}) {
        for (const size_t part : {side + 1, side + 3})
            order << m_treated[part] << m_paralysed[part];
        for (size_t joint = 0; joint < 6; ++joint)
            order << m_stiff[side * 6 + joint];
    }
    order << m_treated[0] << m_paralysed[0] << findChild<QWidget *>(u"iKousyukuSonota"_s)
          << findChild<QWidget *>(u"cKousyukuSonotaStr"_s) << findChild<QWidget *>(u"cSyoujyouSonotaStr"_s);
    for (qsizetype i = 0; i + 1 < order.size(); ++i)
        setTabOrder(order[i], order[i + 1]);
    setFocusProxy(order.first());
}

void BodyPanel::showFigure() {
    BodyFigure::Parts treated{}, paralysed{};
    BodyFigure::Joints stiff{};
    for (size_t i = 0; i < treated.size(); ++i) {
        treated[i] = m_treated[i]->isChecked();
        paralysed[i] = m_paralysed[i]->isChecked();
    }
    for (size_t i = 0; i < stiff.size(); ++i)
        stiff[i] = m_stiff[i]->isChecked();
    m_figure->setMarks(treated, paralysed, stiff);
}

void BodyPanel::setLimbsOnly(bool limbsOnly) {
    m_treated[0]->setEnabled(!limbsOnly);
}
