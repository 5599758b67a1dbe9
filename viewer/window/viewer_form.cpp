#include "viewer/window/viewer_form.h"

#include "app/base/platform/desktop.h"
#include "app/desktop/message_form.h"
#include "viewer/window/note_bar.h"
#include "viewer/window/output_dialogs.h"
#include "viewer/window/page_view.h"
#include "viewer/window/search_bar.h"
#include "viewer/window/thumbnail_list.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QScreen>
#include <QSpinBox>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView wholePage = u"ページ全体";
constexpr QStringView pageWidth = u"ページ幅";

QSettings windowSettings() {
    return platform::userSettings(u"viewer"_s);
}

} // namespace

ViewerForm::ViewerForm(const Document &document, const PrintAdjustment &adjustment, const QStringList &notes)
    : m_document(document),
      m_adjustment(adjustment),
      m_pages(new PageView(m_document)),
      m_thumbnails(new ThumbnailList(m_document)),
      m_search(new SearchBar(m_document)),
      m_page(new QSpinBox),
      m_zoom(new QComboBox),
      m_paper(new QLabel) {
    setWindowTitle(document.title().isEmpty() ? u"帳票表示"_s : document.title());
    makeMenus();
    makeToolBar();
    makePages();
    statusBar()->addPermanentWidget(m_paper);
    connectParts();
    restoreWindow();
    showPage(0);
    showZoom();
    m_pages->setFocus();
    connect(m_pages, &PageView::firstPainted, this, [this, notes] {
        m_thumbnails->begin();
        showNotes(notes + m_document.warnings());
    });
}

ViewerForm::~ViewerForm() {
    // The parts look at the document, which ends before them otherwise.
    delete takeCentralWidget();
}

QAction *ViewerForm::addCommand(QMenu *menu, const QString &text, const QList<QKeySequence> &keys,
                                const std::function<void()> &run) {
    QAction *action = menu->addAction(text);
    action->setShortcuts(keys);
    connect(action, &QAction::triggered, this, run);
    return action;
}

void ViewerForm::makeMenus() {
    makeFileMenu();
    QMenu *menu = menuBar()->addMenu(u"編集(&E)"_s);
    addCommand(menu, u"コピー(&C)"_s, {QKeySequence::Copy}, [this] { copy(); });
    addCommand(menu, u"ページの文字をすべて選択(&A)"_s, {QKeySequence::SelectAll},
               [this] { m_pages->selectPage(); });
    menu->addSeparator();
    addCommand(menu, u"検索(&F)…"_s, {QKeySequence(u"Ctrl+F"_s)}, [this] { m_search->begin(); });
    addCommand(menu, u"次を検索(&N)"_s, {QKeySequence(u"F3"_s)}, [this] { m_search->findNext(); });
    addCommand(menu, u"前を検索(&P)"_s, {QKeySequence(u"Shift+F3"_s)}, [this] { m_search->findPrevious(); });
    makeViewMenu();
    makeGoMenu();
}

void ViewerForm::makeFileMenu() {
    QMenu *menu = menuBar()->addMenu(u"ファイル(&F)"_s);
    addCommand(menu, u"印刷(&P)…"_s, {QKeySequence(u"Ctrl+P"_s)}, [this] { print(); });
    addCommand(menu, u"PDFとして保存(&S)…"_s, {QKeySequence(u"Ctrl+S"_s)}, [this] { saveAs(); });
    menu->addSeparator();
    addCommand(menu, u"閉じる(&X)"_s, {QKeySequence(u"F12"_s), QKeySequence(u"Ctrl+W"_s)},
               [this] { close(); });
}

void ViewerForm::makeViewMenu() {
    QMenu *menu = menuBar()->addMenu(u"表示(&V)"_s);
    addCommand(menu, u"拡大(&I)"_s,
               {QKeySequence(u"Ctrl++"_s), QKeySequence(u"Ctrl+="_s), QKeySequence(u"Ctrl+;"_s),
                QKeySequence(u"+"_s)},
               [this] { m_pages->zoomIn(); });
    addCommand(menu, u"縮小(&O)"_s, {QKeySequence(u"Ctrl+-"_s), QKeySequence(u"-"_s)},
               [this] { m_pages->zoomOut(); });
    addCommand(menu, u"実際の大きさ(&A)"_s, {QKeySequence(u"Ctrl+0"_s)}, [this] { m_pages->setZoom(1); });
    addCommand(menu, u"ページ全体(&P)"_s, {QKeySequence(u"Ctrl+1"_s)},
               [this] { m_pages->setFit(PageView::Fit::Page); });
    addCommand(menu, u"ページ幅(&W)"_s, {QKeySequence(u"Ctrl+2"_s)},
               [this] { m_pages->setFit(PageView::Fit::Width); });
    menu->addSeparator();
    m_showThumbnails = menu->addAction(u"縮小ページ一覧(&T)"_s);
    m_showThumbnails->setShortcut(QKeySequence(u"F4"_s));
    m_showThumbnails->setCheckable(true);
}

void ViewerForm::makeGoMenu() {
    QMenu *menu = menuBar()->addMenu(u"移動(&G)"_s);
    const int last = m_document.pageCount() - 1;
    addCommand(menu, u"最初のページ(&F)"_s, {QKeySequence(u"Ctrl+Home"_s)}, [this] { m_pages->goToPage(0); });
    addCommand(menu, u"前のページ(&P)"_s, {QKeySequence(u"Ctrl+PgUp"_s)},
               [this] { m_pages->goToPage(m_pages->currentPage() - 1); });
    addCommand(menu, u"次のページ(&N)"_s, {QKeySequence(u"Ctrl+PgDown"_s)},
               [this] { m_pages->goToPage(m_pages->currentPage() + 1); });
    addCommand(menu, u"最後のページ(&L)"_s, {QKeySequence(u"Ctrl+End"_s)},
               [this, last] { m_pages->goToPage(last); });
    addCommand(menu, u"ページを指定(&G)…"_s, {QKeySequence(u"Ctrl+G"_s)}, [this] {
        m_page->setFocus();
        m_page->selectAll();
    });
}

void ViewerForm::makeToolBar() {
    QToolBar *bar = addToolBar(u"ツールバー"_s);
    bar->setObjectName(u"tools"_s);
    bar->setMovable(false);
    bar->setContextMenuPolicy(Qt::PreventContextMenu);
    bar->addAction(u"印刷"_s, this, &ViewerForm::print)->setToolTip(u"Ctrl+P"_s);
    bar->addAction(u"PDF保存"_s, this, &ViewerForm::saveAs)->setToolTip(u"Ctrl+S"_s);
    bar->addAction(u"検索"_s, m_search, &SearchBar::begin)->setToolTip(u"Ctrl+F"_s);
    bar->addSeparator();
    m_page->setObjectName(u"page"_s);
    m_page->setRange(1, m_document.pageCount());
    m_page->setKeyboardTracking(false);
    m_page->setToolTip(u"Ctrl+G"_s);
    bar->addWidget(m_page);
    bar->addWidget(new QLabel(u" / %1 ページ "_s.arg(m_document.pageCount())));
    bar->addSeparator();
    bar->addAction(u"－"_s, m_pages, &PageView::zoomOut)->setToolTip(u"縮小（Ctrl+-）"_s);
    m_zoom->setObjectName(u"zoom"_s);
    m_zoom->setEditable(true);
    m_zoom->setInsertPolicy(QComboBox::NoInsert);
    m_zoom->addItems({wholePage.toString(), pageWidth.toString(), u"50%"_s, u"75%"_s, u"100%"_s, u"125%"_s,
                      u"150%"_s, u"200%"_s, u"400%"_s});
    bar->addWidget(m_zoom);
    bar->addAction(u"＋"_s, m_pages, &PageView::zoomIn)->setToolTip(u"拡大（Ctrl++）"_s);
}

void ViewerForm::makePages() {
    auto *middle = new QWidget;
    auto *column = new QVBoxLayout(middle);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addWidget(m_search);
    auto *row = new QHBoxLayout;
    row->setSpacing(0);
    row->addWidget(m_thumbnails);
    row->addWidget(m_pages, 1);
    column->addLayout(row, 1);
    setCentralWidget(middle);
    QWidget::setTabOrder(m_pages, m_thumbnails);
}

void ViewerForm::connectParts() {
    connect(m_showThumbnails, &QAction::toggled, m_thumbnails, &QWidget::setVisible);
    connect(m_thumbnails, &ThumbnailList::pageChosen, m_pages, &PageView::goToPage);
    connect(m_pages, &PageView::pageChanged, this, &ViewerForm::showPage);
    connect(m_pages, &PageView::zoomChanged, this, &ViewerForm::showZoom);
    connect(m_page, &QSpinBox::valueChanged, this, [this](int page) { m_pages->goToPage(page - 1); });
    auto *number = m_page->findChild<QLineEdit *>();
    connect(number, &QLineEdit::returnPressed, this, [this, number] {
        m_pages->setFocus();
        number->deselect();
    });
    connect(m_zoom, &QComboBox::textActivated, this, &ViewerForm::chooseZoom);
    connect(m_zoom->lineEdit(), &QLineEdit::returnPressed, this,
            [this] { chooseZoom(m_zoom->currentText()); });
    connect(m_search, &SearchBar::textChanged, m_pages, &PageView::setHighlight);
    connect(m_search, &SearchBar::found, m_pages, &PageView::showHit);
    connect(m_search, &SearchBar::closed, this, [this] {
        m_pages->setHighlight({});
        m_pages->setFocus();
    });
}

void ViewerForm::showPage(int page) {
    {
        const QSignalBlocker quiet(m_page);
        m_page->setValue(page + 1);
    }
    m_thumbnails->setCurrentPage(page);
    m_search->setPage(page);
    const QSizeF size = m_document.pageSize(page);
    m_paper->setText(u"用紙 %1 × %2 mm"_s.arg(size.width()).arg(size.height()));
}

void ViewerForm::showZoom() {
    m_zoom->setCurrentText(u"%1%"_s.arg(qRound(m_pages->zoom() * 100)));
}

void ViewerForm::chooseZoom(const QString &text) {
    QString number = text;
    bool isNumber = false;
    const double percent = number.remove(u'%').toDouble(&isNumber);
    if (text == wholePage)
        m_pages->setFit(PageView::Fit::Page);
    else if (text == pageWidth)
        m_pages->setFit(PageView::Fit::Width);
    else if (isNumber)
        m_pages->setZoom(percent / 100);
    showZoom();
    m_pages->setFocus();
}

void ViewerForm::showNotes(const QStringList &notes) {
    if (!notes.isEmpty())
        qobject_cast<QVBoxLayout *>(centralWidget()->layout())->insertWidget(0, new NoteBar(notes));
}

void ViewerForm::print() {
    if (hasPrinter()) {
        printFromDialog(m_document, m_adjustment, m_pages->currentPage(), this);
        return;
    }
    if (QtMessages().ask(u"プリンターが見つかりません。PDFとして保存しますか？"_s, u"印刷"_s))
        saveAs();
}

void ViewerForm::saveAs() {
    const QString path =
        askPdfPath(u"PDFとして保存"_s, m_pdfPath.isEmpty() ? proposedPdfPath(m_document) : m_pdfPath, this);
    if (!path.isEmpty() && savePdf(m_document, path, FileUse::Common, this) == OutputEnd::Done) {
        m_pdfPath = path;
        statusBar()->showMessage(u"「%1」に保存しました。"_s.arg(QDir::toNativeSeparators(path)));
    }
}

void ViewerForm::copy() {
    const QString text = m_pages->selectedText();
    if (text.isEmpty()) {
        statusBar()->showMessage(u"文字が選択されていません。文字の上をドラッグしてください。"_s, 5000);
        return;
    }
    QGuiApplication::clipboard()->setText(text);
    statusBar()->showMessage(u"コピーしました。"_s, 3000);
}

void ViewerForm::keyPressEvent(QKeyEvent *event) {
    if (event->key() != Qt::Key_Escape) {
        QMainWindow::keyPressEvent(event);
    } else if (m_search->isVisible()) {
        m_search->hide();
    } else if (m_page->hasFocus() || m_zoom->hasFocus()) {
        m_pages->setFocus();
    } else {
        close();
    }
}

void ViewerForm::closeEvent(QCloseEvent *event) {
    keepWindow();
    QMainWindow::closeEvent(event);
}

void ViewerForm::keepWindow() const {
    QSettings settings = windowSettings();
    settings.setValue(u"geometry"_s, saveGeometry());
    settings.setValue(u"fit"_s, int(m_pages->fit()));
    settings.setValue(u"zoom"_s, m_pages->zoom());
    if (m_document.pageCount() > 1)
        settings.setValue(u"thumbnails"_s, m_showThumbnails->isChecked());
}

void ViewerForm::restoreWindow() {
    const QSettings settings = windowSettings();
    if (!restoreGeometry(settings.value(u"geometry"_s).toByteArray())) {
        const QRect free = screen()->availableGeometry();
        QRect middle({}, free.size() * 9 / 10);
        middle.moveCenter(free.center());
        setGeometry(middle);
        setWindowState(Qt::WindowMaximized);
    }
    m_showThumbnails->setChecked(m_document.pageCount() > 1 &&
                                 settings.value(u"thumbnails"_s, true).toBool());
    m_thumbnails->setVisible(m_showThumbnails->isChecked());
    switch (settings.value(u"fit"_s, int(PageView::Fit::Page)).toInt()) {
    case int(PageView::Fit::Width):
        m_pages->setFit(PageView::Fit::Width);
        break;
    case int(PageView::Fit::None):
        m_pages->setZoom(settings.value(u"zoom"_s, 1.0).toDouble());
        break;
    default:
        m_pages->setFit(PageView::Fit::Page);
    }
}
