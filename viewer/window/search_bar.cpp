#include "viewer/window/search_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <chrono>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto typingPause = 250ms;
constexpr auto stepTime = 20ms;

QToolButton *makeButton(const QString &text, const QString &tip) {
    auto *button = new QToolButton;
    button->setText(text);
    button->setToolTip(tip);
    button->setFocusPolicy(Qt::TabFocus);
    return button;
}

} // namespace

SearchBar::SearchBar(const Document &document, QWidget *parent)
    : QFrame(parent), m_document(document), m_text(new QLineEdit), m_answer(new QLabel) {
    auto *row = new QHBoxLayout(this);
    auto *label = new QLabel(u"検索する文字(&K)"_s);
    label->setBuddy(m_text);
    auto *previous = makeButton(u"前を検索"_s, u"Shift+F3"_s);
    auto *next = makeButton(u"次を検索"_s, u"F3"_s);
    auto *close = makeButton(u"閉じる"_s, u"Esc"_s);
    m_text->setObjectName(u"searchText"_s);
    m_text->setClearButtonEnabled(true);
    m_text->setMaximumWidth(fontMetrics().height() * 20);
    m_answer->setObjectName(u"searchAnswer"_s);
    for (QWidget *part : std::initializer_list<QWidget *>{label, m_text, previous, next, m_answer})
        row->addWidget(part);
    row->addStretch();
    row->addWidget(close);
    hide();

    m_pause.setSingleShot(true);
    m_pause.setInterval(typingPause);
    connect(&m_pause, &QTimer::timeout, this, [this] { start({m_page, -1, {}}, true); });
    connect(&m_steps, &QTimer::timeout, this, [this] { step(); });
    connect(m_text, &QLineEdit::textChanged, this, [this](const QString &text) {
        end({});
        m_last.reset();
        m_pause.start();
        Q_EMIT textChanged(text);
    });
    connect(next, &QToolButton::clicked, this, &SearchBar::findNext);
    connect(previous, &QToolButton::clicked, this, &SearchBar::findPrevious);
    connect(close, &QToolButton::clicked, this, &QWidget::hide);
}

void SearchBar::begin() {
    show();
    m_text->setFocus();
    m_text->selectAll();
}

void SearchBar::findNext() {
    isVisible() ? start(m_last.value_or(TextHit{m_page, -1, {}}), true) : begin();
}

void SearchBar::findPrevious() {
    isVisible() ? start(m_last.value_or(TextHit{m_page, -1, {}}), false) : begin();
}

void SearchBar::start(const TextHit &from, bool forward) {
    m_pause.stop();
    if (m_text->text().isEmpty())
        return;
    m_search.emplace(m_document, m_text->text(), from, forward);
    m_steps.start(0ms);
}

void SearchBar::step() {
    switch (m_search->step(QDeadlineTimer(stepTime))) {
    case TextSearch::State::Searching:
        m_answer->setText(
            u"検索中… %L1 / %L2 ページ"_s.arg(m_search->pagesSearched()).arg(m_document.pageCount()));
        return;
    case TextSearch::State::NotFound:
        end(u"見つかりません。"_s);
        return;
    case TextSearch::State::Found:
        m_last = m_search->hit();
        end(u"%L1 ページ"_s.arg(m_last->page + 1));
        Q_EMIT found(*m_last);
    }
}

void SearchBar::end(const QString &answer) {
    m_steps.stop();
    m_search.reset();
    m_answer->setText(answer);
}

void SearchBar::keyPressEvent(QKeyEvent *event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        event->modifiers() & Qt::ShiftModifier ? findPrevious() : findNext();
        return;
    case Qt::Key_Escape:
        hide();
        return;
    default:
        QFrame::keyPressEvent(event);
    }
}

void SearchBar::hideEvent(QHideEvent *) {
    m_pause.stop();
    end({});
    m_last.reset();
    Q_EMIT closed();
}
