#include "widgets/layout_preview.h"

#include "viewer/command/job_document.h"
#include "viewer/window/note_bar.h"
#include "viewer/window/page_view.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

LayoutPreview::LayoutPreview(QWidget *parent)
    : QWidget(parent),
      m_bar(new QWidget),
      m_column(new QVBoxLayout(this)),
      m_page(new QLabel),
      m_zoom(new QLabel),
      m_problem(new QLabel) {
    m_column->setContentsMargins({});
    m_column->setSpacing(0);
    m_column->addWidget(m_bar);
    makeBar();
    m_problem->setObjectName(u"problem"_s);
    m_problem->setWordWrap(true);
    m_problem->setTextFormat(Qt::PlainText);
    m_problem->setAlignment(Qt::AlignCenter);
    m_problem->setMargin(fontMetrics().height());
    m_problem->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_column->addWidget(m_problem, 1);
    showProblem({});
}

LayoutPreview::~LayoutPreview() = default;

QToolButton *LayoutPreview::addButton(const QString &name, const QString &text, const QString &tip) {
    auto *button = new QToolButton;
    button->setObjectName(name);
    button->setText(text);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    m_bar->layout()->addWidget(button);
    return button;
}

void LayoutPreview::makeBar() {
    auto *row = new QHBoxLayout(m_bar);
    row->setContentsMargins(2, 2, 2, 2);
    m_previous = addButton(u"previousPage"_s, u"◀"_s, u"前のページ（PageUp）"_s);
    row->addWidget(m_page);
    m_next = addButton(u"nextPage"_s, u"▶"_s, u"次のページ（PageDown）"_s);
    row->addStretch();
    m_zoomOut = addButton(u"zoomOut"_s, u"－"_s, u"縮小"_s);
    row->addWidget(m_zoom);
    m_zoomIn = addButton(u"zoomIn"_s, u"＋"_s, u"拡大"_s);
    m_fitPage = addButton(u"fitPage"_s, u"全体"_s, u"ページ全体を表示"_s);
    m_fitWidth = addButton(u"fitWidth"_s, u"幅"_s, u"ページの幅に合わせる"_s);
    connect(m_previous, &QToolButton::clicked, this, [this] { goToPage(currentPage() - 1); });
    connect(m_next, &QToolButton::clicked, this, [this] { goToPage(currentPage() + 1); });
    connect(m_zoomOut, &QToolButton::clicked, this, [this] { m_pages->zoomOut(); });
    connect(m_zoomIn, &QToolButton::clicked, this, [this] { m_pages->zoomIn(); });
    connect(m_fitPage, &QToolButton::clicked, this, [this] { m_pages->setFit(PageView::Fit::Page); });
    connect(m_fitWidth, &QToolButton::clicked, this, [this] { m_pages->setFit(PageView::Fit::Width); });
}

bool LayoutPreview::showCommandFile(const QString &path) {
    clear();
    Job job;
    Problem wrong;
    const std::optional<Document> document = loadCommandFile(path, &job, &wrong);
    if (!document) {
        showProblem(wrong.sentence());
        return false;
    }
    if (document->pageCount() == 0) {
        showProblem(u"表示するデータがありません。"_s);
        return false;
    }
    m_document = *document;
    makePages();
    return true;
}

void LayoutPreview::clear() {
    m_notes.reset();
    m_pages.reset();
    m_document = {};
    showProblem({});
}

void LayoutPreview::makePages() {
    if (const QStringList warnings = m_document.warnings(); !warnings.isEmpty()) {
        m_notes = std::make_unique<NoteBar>(warnings);
        m_column->addWidget(m_notes.get());
    }
    m_pages = std::make_unique<PageView>(m_document);
    m_problem->hide();
    m_column->addWidget(m_pages.get(), 1);
    m_bar->setEnabled(true);
    setFocusProxy(m_pages.get());
    connect(m_pages.get(), &PageView::pageChanged, this, [this] { showState(); });
    connect(m_pages.get(), &PageView::zoomChanged, this, [this] { showState(); });
    showState();
}

void LayoutPreview::showProblem(const QString &text) {
    m_bar->setEnabled(false);
    m_page->clear();
    m_zoom->clear();
    m_problem->setText(text);
    m_problem->show();
}

void LayoutPreview::showState() {
    m_page->setText(u"%1 / %2 ページ"_s.arg(currentPage() + 1).arg(pageCount()));
    m_zoom->setText(u"%1 %"_s.arg(std::lround(m_pages->zoom() * 100)));
    m_previous->setEnabled(currentPage() > 0);
    m_next->setEnabled(currentPage() + 1 < pageCount());
}

QString LayoutPreview::problem() const {
    return m_problem->text();
}

int LayoutPreview::currentPage() const {
    return m_pages ? m_pages->currentPage() : -1;
}

void LayoutPreview::goToPage(int page) {
    if (m_pages && page >= 0 && page < pageCount())
        m_pages->goToPage(page);
}
