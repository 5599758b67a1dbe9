#include "benchmarks/list_screen.h"

#include "benchmarks/figures.h"
#include "consent/list/list_grid.h"
#include "widgets/date_box.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QHeaderView>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {
constexpr int patience = 10'000; // milliseconds
}

Answer ListScreen::NoMessages::show(const Message &message) {
    stop(message.text);
}

ListScreen::ListScreen(const QString &folder, const QDate &today, const Branch &branch, cT_ADODB &db)
    : m_folders(folder),
      m_clock(today),
      m_environment{m_folders, m_clock, m_messages, m_processes, branch},
      m_form(m_environment) {
    if (m_form.iInit(db, 0) != 0)
        stop(m_form.sErrMsg());
    m_grid = m_form.findChild<ListGrid *>(u"ssDouiD"_s);
    m_grid->viewport()->installEventFilter(this);
    m_form.resize(1920, 1040); // a full screen shows most cells at a time
    m_form.show();
    settle();
}

int ListScreen::rowCount() const {
    return m_grid->model()->rowCount();
}

bool ListScreen::eventFilter(QObject *watched, QEvent *event) {
    m_painted = m_painted || event->type() == QEvent::Paint;
    return QObject::eventFilter(watched, event);
}

void ListScreen::settle() {
    do {
        m_painted = false;
        QTest::qWait(20);
    } while (m_painted);
}

// The filter sees a paint event before it is dealt with; by the end of the loop's turn it has been.
double ListScreen::untilPainted(const std::function<void()> &stroke) {
    m_painted = false;
    return millisecondsOf([&] {
        stroke();
        QElapsedTimer waiting;
        waiting.start();
        while (!m_painted) {
            QCoreApplication::processEvents();
            if (waiting.hasExpired(patience))
                stop(u"the grid was not painted"_s);
        }
    });
}

double ListScreen::search(const QDate &from, const QDate &to) {
    m_form.findChild<DateBox *>(u"imD_KikanFrom"_s)->setDate(from);
    m_form.findChild<DateBox *>(u"imD_KikanTo"_s)->setDate(to);
    settle();
    return untilPainted([&] { QTest::keyClick(&m_form, Qt::Key_F4); });
}

std::vector<double> ListScreen::pageDown() {
    m_grid->goTo(0, 0);
    settle();
    std::vector<double> pages;
    while (m_grid->currentIndex().row() < rowCount() - 1)
        pages.push_back(untilPainted([&] { QTest::keyClick(m_grid, Qt::Key_PageDown); }));
    return pages;
}

double ListScreen::jumpToEnd() {
    m_grid->goTo(0, 0);
    settle();
    return untilPainted([&] { QTest::keyClick(m_grid, Qt::Key_End, Qt::ControlModifier); });
}

double ListScreen::clickHeader(ListColumn column) {
    const QModelIndex cell = m_grid->model()->index(0, int(column));
    m_grid->scrollTo(cell);
    settle();
    // Where it is seen: frozen columns stay when the rest is scrolled.
    const QHeaderView *header = m_grid->horizontalHeader();
    const QPoint middle(m_grid->visualRect(cell).center().x(), header->height() / 2);
    return untilPainted([&] { QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, middle); });
}

double ListScreen::tickAll() {
    return untilPainted([&] { QTest::keyClick(&m_form, Qt::Key_F7); });
}

double ListScreen::undo(bool back) {
    return untilPainted([&] { QTest::keyClick(&m_form, back ? Qt::Key_Z : Qt::Key_Y, Qt::ControlModifier); });
}

std::vector<double> ListScreen::narrowByKana(const QString &text) {
    auto *box = m_form.findChild<QLineEdit *>(u"txt_SiboriKana"_s);
    box->setFocus();
    std::vector<double> strokes;
    for (const QChar &kana : text)
        strokes.push_back(untilPainted(
            [&] { QTest::sendKeyEvent(QTest::Click, box, Qt::Key_unknown, QString(kana), {}); }));
    for (int i = 0; i < text.size(); ++i)
        strokes.push_back(untilPainted([&] { QTest::keyClick(box, Qt::Key_Backspace); }));
    return strokes;
}
