#include "consent/list/state_bar.h"

#include "widgets/flow_layout.h"

#include <QAction>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

StateBar::StateBar(QWidget *parent) : QWidget(parent) {
    auto *lines = new QVBoxLayout(this);
    lines->setContentsMargins({});
    auto *tabs = new QWidget(this);
    m_tabs = new FlowLayout(tabs);
    m_stale = new QLabel(this);
    m_stale->setObjectName(u"lblStale"_s);
    m_stale->setTextFormat(Qt::PlainText);
    m_stale->setWordWrap(true);
    m_stale->setFrameShape(QFrame::StyledPanel);
    m_stale->setAutoFillBackground(true);
    m_stale->setBackgroundRole(QPalette::ToolTipBase);
    m_stale->setForegroundRole(QPalette::ToolTipText);
    m_stale->hide();
    lines->addWidget(tabs);
    lines->addWidget(m_stale);
}

void StateBar::addState(RowState state, QAction *action) {
    auto *tab = new QToolButton(this);
    tab->setDefaultAction(action);
    tab->setObjectName(action->objectName() + u"_tab"_s);
    tab->setFocusPolicy(Qt::NoFocus);
    m_tabs->addWidget(tab);
    m_actions.insert(state, action);
}

void StateBar::showCounts(const StateCounts &counts, RowState chosen) {
    for (auto [state, action] : m_actions.asKeyValueRange()) {
        const QString caption = rowState(state).caption;
        action->setText(action->isEnabled() ? caption + u" %L1"_s.arg(counts[size_t(state)]) : caption);
        action->setChecked(state == chosen);
    }
}

void StateBar::showStale(const QString &text) {
    m_stale->setText(text);
    m_stale->setVisible(!text.isEmpty());
}
