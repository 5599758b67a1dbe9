#include "widgets/layout_preview.h"

#include "viewer/command/job_document.h"
#include "viewer/window/note_bar.h"
#include "viewer/window/page_view.h"

#include <QActionGroup>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QToolButton>
#include <array>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Two steps fit the page to the window, the others are shares of its size.
struct ZoomStep {
    QString text;
    PageView::Fit fit;
    double zoom;
};

const std::array<ZoomStep, 4> &zoomSteps() {
    using enum PageView::Fit;
    static const std::array<ZoomStep, 4> steps{
        ZoomStep{u"全体"_s, Page, 0}, {u"幅"_s, Width, 0}, {u"100%"_s, None, 1}, {u"150%"_s, None, 1.5}};
    return steps;
}
constexpr int firstStep = 1; ///< a page's text can be read in its window's width

} // namespace

LayoutPreview::LayoutPreview(QWidget *parent)
    : QWidget(parent),
      m_bar(new QWidget),
      m_column(new QVBoxLayout(this)),
      m_menu(new QMenu(u"見本の倍率(&V)"_s, this)),
      m_steps(new QActionGroup(this)),
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
    addZoomSteps();
    connect(m_previous, &QToolButton::clicked, this, [this] { goToPage(currentPage() - 1); });
    connect(m_next, &QToolButton::clicked, this, [this] { goToPage(currentPage() + 1); });
    connect(m_zoomOut, &QToolButton::clicked, this, [this] { zoomBy(&PageView::zoomOut); });
    connect(m_zoomIn, &QToolButton::clicked, this, [this] { zoomBy(&PageView::zoomIn); });
}

void LayoutPreview::addZoomSteps() {
    m_menu->setObjectName(u"mnu_Zoom"_s);
    m_steps->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this,
            [this](QPoint place) { m_menu->popup(mapToGlobal(place)); });
    for (size_t i = 0; i < zoomSteps().size(); ++i) {
        QAction *step = m_menu->addAction(zoomSteps()[i].text);
        step->setData(int(i));
        step->setCheckable(true);
        step->setChecked(i == firstStep);
        m_steps->addAction(step);
        addButton(u"optZoom_%1"_s.arg(i), {}, u"見本の倍率：%1"_s.arg(step->text()))->setDefaultAction(step);
    }
    connect(m_steps, &QActionGroup::triggered, this, [this](QAction *step) {
        step->setChecked(true);
        if (m_pages)
            applyZoom(*step);
    });
}

// A step between the steps is none of them, and holds for the next document too.
void LayoutPreview::zoomBy(void (PageView::*change)()) {
    if (QAction *step = m_steps->checkedAction())
        step->setChecked(false);
    (m_pages.get()->*change)();
    m_ownZoom = m_pages->zoom();
}

void LayoutPreview::applyZoom(const QAction &step) {
    const ZoomStep &chosen = zoomSteps()[size_t(step.data().toInt())];
    if (chosen.fit == PageView::Fit::None)
        m_pages->setZoom(chosen.zoom);
    else
        m_pages->setFit(chosen.fit);
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
    if (const QAction *step = m_steps->checkedAction())
        applyZoom(*step);
    else
        m_pages->setZoom(m_ownZoom);
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
