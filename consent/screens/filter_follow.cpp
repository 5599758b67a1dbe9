#include "consent/screens/filter_follow.h"

#include "consent/list/list_filter_panel.h"
#include "consent/list/list_grid.h"
#include "consent/list/state_bar.h"
#include "consent/screens/list_work.h"

#include <QApplication>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int choosing = 120; // milliseconds
constexpr int typing = 450;

} // namespace

FilterFollow::FilterFollow(const ListWindow &window, const ListFilter &shown, Show show)
    : m_window(window.window),
      m_panel(window.panel),
      m_model(window.model),
      m_grid(window.grid),
      m_states(window.states),
      m_shown(shown),
      m_show(std::move(show)) {
    m_pause.setSingleShot(true);
    m_pause.callOnTimeout([this] { follow(); });
}

void FilterFollow::chosen() {
    m_pause.start(choosing);
}

void FilterFollow::typed() {
    m_pause.start(typing);
}

void FilterFollow::caughtUp() {
    m_pause.stop();
    m_states->showStale({});
}

// Never behind the back of a question or another screen, nor while a cell is open: it would close.
void FilterFollow::follow() {
    const QWidget *modal = QApplication::activeModalWidget();
    if (m_grid->isEditing() || (modal && modal != m_window)) {
        typed();
        return;
    }
    m_pause.stop();
    m_states->showStale(whyBehind());
}

bool FilterFollow::isBehind() const {
    ListFilter asked = m_shown;
    m_panel->readSettled(asked);
    return !m_panel->isSettled() || asked != m_shown;
}

QString FilterFollow::whyBehind() {
    const QString before = u"表示中の行は、変更前の条件のものです。"_s;
    if (!isBehind())
        return {};
    if (!m_panel->isSettled())
        return u"条件を入力中です。"_s + before + u"Enter で決定すると検索します。"_s;
    ListFilter asked = m_shown;
    m_panel->readSettled(asked);
    if (!whyRangeIsWrong(asked).isEmpty())
        return u"対象期間が正しくありません。"_s + before + u"開始日と終了日を入力しなおしてください。"_s;
    if (m_model->hasChanges())
        return u"条件が変わりました。"_s + before +
               u"F4 で検索します（未保存の変更は、保存するか確認します）。"_s;
    if (!m_show(asked))
        return u"検索できませんでした。"_s + before + u"F4 でもう一度検索します。"_s;
    return {};
}
