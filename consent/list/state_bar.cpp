#include "consent/list/state_bar.h"

#include "widgets/chosen_button.h"
#include "widgets/flow_layout.h"

#include <QAction>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

StateBar::StateBar(QWidget *parent) : QWidget(parent) {
    auto *lines = new QVBoxLayout(this);
    lines->setContentsMargins({});
    auto *buttons = new QWidget(this);
    auto *groups = new FlowLayout(buttons);
    m_tabs = new QWidget(buttons);
    m_ranges = new QWidget(buttons);
    for (QWidget *group : {m_tabs, m_ranges}) {
        new QHBoxLayout(group);
        group->layout()->setContentsMargins({});
        group->layout()->setSpacing(1); // all stand in one line of a small window
        groups->addWidget(group);
    }
    m_ranges->layout()->setContentsMargins(fontMetrics().averageCharWidth(), 0, 0, 0);
    m_stale = new QLabel(this);
    m_stale->setObjectName(u"lblStale"_s);
    m_stale->setTextFormat(Qt::PlainText);
    m_stale->setWordWrap(true);
    m_stale->setFrameShape(QFrame::StyledPanel);
    m_stale->setAutoFillBackground(true);
    m_stale->setBackgroundRole(QPalette::ToolTipBase);
    m_stale->setForegroundRole(QPalette::ToolTipText);
    m_stale->hide();
    lines->addWidget(buttons);
    lines->addWidget(m_stale);
}

QToolButton *StateBar::addButton(QAction *action, QWidget *to) {
    auto *button = new QToolButton(to);
    button->setDefaultAction(action);
    button->setObjectName(action->objectName() + u"_button"_s);
    button->setFocusPolicy(Qt::NoFocus);
    to->layout()->addWidget(button);
    return button;
}

void StateBar::addState(RowState state, QAction *action) {
    m_states.insert(state, addButton(action, m_tabs));
}

void StateBar::addRange(QAction *action) {
    addButton(action, m_ranges);
}

void StateBar::showCounts(const StateCounts &counts, RowState chosen) {
    for (auto [state, tab] : m_states.asKeyValueRange()) {
        const QString caption = rowState(state).caption;
        QAction *action = tab->defaultAction();
        action->setText(action->isEnabled() ? caption + u" %L1"_s.arg(counts[size_t(state)]) : caption);
        action->setChecked(state == chosen);
        showChosen(*tab, state == chosen);
    }
}

void StateBar::showStale(const QString &text) {
    m_stale->setText(text);
    m_stale->setVisible(!text.isEmpty());
}
