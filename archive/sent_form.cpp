#include "archive/sent_form.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "app/base/settings.h"
#include "app/base/table_model.h"
#include "app/base/time_limit.h"
#include "archive/archive.h"
#include "widgets/grid.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDialog>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString caption = u"何を送ったか"_s;

class SentModel : public TableModel {
public:
    explicit SentModel(std::vector<SentDocument> documents)
        : TableModel({{u"文書"_s}, {u"ページ"_s}, {u"保管"_s}}, nullptr), m_documents(std::move(documents)) {}

    const SentDocument &at(int row) const { return m_documents[size_t(row)]; }
    QVariant data(const QModelIndex &index, int role) const override {
        if (role == Qt::TextAlignmentRole && index.column() == 1)
            return int(Qt::AlignRight | Qt::AlignVCenter);
        if (!index.isValid() || role != Qt::DisplayRole)
            return {};
        const SentDocument &document = at(index.row());
        if (index.column() == 1)
            return document.pages > 0 ? u"%L1"_s.arg(document.pages) : QString();
        return index.column() == 0 ? document.title : document.name.isEmpty() ? u"保管なし"_s : u"○"_s;
    }

private:
    int count() const override { return int(m_documents.size()); }

    std::vector<SentDocument> m_documents;
};

/// Pages that can be shown, and why others cannot.
struct Found {
    std::vector<QByteArray> pages;
    QStringList missing;
};

Found findPages(const Archive &archive, const std::vector<const SentDocument *> &documents) {
    Found found;
    std::chrono::milliseconds limit = answerLimit;
    for (const SentDocument *document : documents) {
        const auto asked = std::chrono::steady_clock::now();
        Result<QByteArray> content = keptContent(archive, *document, limit);
        // Of a drive that does not answer the others are not waited for.
        if (!content && std::chrono::steady_clock::now() - asked >= limit)
            limit = {};
        if (!content)
            found.missing += u"%1：%2"_s.arg(document->title, content.reason());
        else if (isPages(*content))
            found.pages.push_back(std::move(*content));
    }
    return found;
}

/// Shows what is left of the documents, and tells what is not.
void showKept(Environment &environment, const std::vector<const SentDocument *> &documents,
              const QString &title) {
    const Found found = findPages(Archive(environment.folders), documents);
    if (!found.missing.isEmpty())
        environment.messages.warn(u"表示できない文書があります。\r\n\r\n"_s + found.missing.join(u"\r\n"_s),
                                  caption);
    if (found.pages.empty() && found.missing.isEmpty())
        environment.messages.note(documents.empty() ? u"表示する文書を選択してください。"_s
                                                    : u"メールの本文は、行を選ぶと下に出ます。"_s);
    if (found.pages.empty())
        return;
    if (const Result<> shown = showPages(environment, found.pages, u"%1：%2"_s.arg(caption, title)); !shown)
        environment.messages.fail(shown.reason(), caption);
}

/// The documents of a batch: pages go to the viewer, mails are read here.
class SentForm : public QDialog {
public:
    SentForm(Environment &environment, std::vector<SentDocument> documents, const QString &title,
             QWidget *parent)
        : QDialog(parent),
          m_environment(environment),
          m_archive(environment.folders),
          m_title(title),
          m_model(std::move(documents)),
          m_grid(new Grid(this)),
          m_text(new QPlainTextEdit(this)) {
        setObjectName(u"frmSent"_s);
        setWindowTitle(u"%1　%2"_s.arg(caption, title));
        layOut();
        m_grid->selectAll();
        m_grid->setFocus();
    }

private:
    void layOut() {
        auto *column = new QVBoxLayout(this);
        m_grid->setObjectName(u"ssSent"_s);
        m_grid->setAccessibleName(u"送った文書"_s);
        m_grid->setModel(&m_model);
        m_grid->setSelectionBehavior(QAbstractItemView::SelectRows);
        m_grid->setSelectionMode(QAbstractItemView::ExtendedSelection);
        m_grid->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
        m_grid->fitColumns(44);
        m_grid->goTo(0, 0);
        column->addWidget(m_grid, 2);
        m_text->setObjectName(u"txtMail"_s);
        m_text->setAccessibleName(u"メールの本文"_s);
        m_text->setReadOnly(true);
        m_text->setTabChangesFocus(true);
        m_text->hide();
        column->addWidget(m_text, 3);
        auto *buttons = new QHBoxLayout;
        column->addLayout(buttons);
        buttons->addWidget(new QLabel(u"Enter：選んだ文書を表示"_s));
        buttons->addStretch();
        auto *open = new QPushButton(u"表示 (F5)"_s);
        open->setObjectName(u"cmdPreview"_s);
        open->setShortcut(Qt::Key_F5);
        open->setDefault(true);
        connect(open, &QPushButton::clicked, this, [this] { showChosen(); });
        buttons->addWidget(open);
        auto *end = new QPushButton(u"終了 (F12)"_s);
        end->setObjectName(u"cmdEnd"_s);
        end->setShortcut(Qt::Key_F12);
        end->setAutoDefault(false);
        connect(end, &QPushButton::clicked, this, &QDialog::reject);
        buttons->addWidget(end);
        connect(m_grid->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
                [this] { showMail(); });
        showMail();
        resize(QSize(m_grid->widthOf(56), fontMetrics().height() * 28)
                   .boundedTo(screen()->availableSize() * 9 / 10));
    }

    void showChosen() {
        std::vector<const SentDocument *> chosen;
        for (const QModelIndex &row : m_grid->selectionModel()->selectedRows())
            chosen.push_back(&m_model.at(row.row()));
        showKept(m_environment, chosen, m_title);
    }

    // Pages are not read before they are wanted: a mail has none.
    void showMail() {
        const QModelIndex current = m_grid->currentIndex();
        if (!current.isValid() || m_model.at(current.row()).pages > 0 ||
            m_model.at(current.row()).name.isEmpty())
            return m_text->hide();
        const Result<QByteArray> content = keptContent(m_archive, m_model.at(current.row()));
        if (content && isPages(*content))
            return m_text->hide();
        m_text->setPlainText(content ? readableMail(*content) : content.reason());
        m_text->show();
    }

    Environment &m_environment;
    Archive m_archive;
    QString m_title;
    SentModel m_model;
    Grid *m_grid;
    QPlainTextEdit *m_text;
};

/// "5年分", "5年6か月分", "8か月分"
QString termText(int months) {
    return (months >= 12 ? u"%1年"_s.arg(months / 12) : QString()) +
           (months % 12 ? u"%1か月"_s.arg(months % 12) : QString()) + u"分"_s;
}

/// "8 kB", "5.4 MB", "56 MB"
QString bytesText(qint64 bytes) {
    constexpr double megabyte = 1 << 20;
    const double size = double(bytes) / megabyte;
    return size < 1 ? u"%L1 kB"_s.arg((bytes + 1023) / 1024)
                    : u"%L1 MB"_s.arg(size, 0, 'f', size < 10 ? 1 : 0);
}

QString sizeText(const Archive::Size &size, int months) {
    return u"保管している文書：%L1件、%2（%3）"_s.arg(size.documents)
        .arg(bytesText(size.bytes), months > 0 ? termText(months) + u"まで"_s : u"期限なし"_s);
}

} // namespace

void showSent(QWidget *parent, Environment &environment, cT_ADODB &db, qint32 batch, const QString &title) {
    Result<std::vector<SentDocument>> documents = readSentDocuments(db, batch);
    if (!documents)
        environment.messages.fail(documents.reason(), caption);
    else if (documents->empty())
        environment.messages.note(u"この処理で送った文書の記録はありません。"_s);
    else if (documents->size() == 1 && (documents->front().pages > 0 || documents->front().name.isEmpty()))
        showKept(environment, {&documents->front()}, title);
    else
        SentForm(environment, std::move(*documents), title, parent).exec();
}

// Thousands of files on a server's drive take their time: nobody waits for them.
void showArchiveSize(const Environment &environment, QLabel *label) {
    const int months = Settings(environment.folders).number(Setting::保管月数);
    const QPointer<QLabel> where(label);
    Apart<bool>([archive = Archive(environment.folders), months, where] {
        const QString text = sizeText(archive.size(), months);
        return QMetaObject::invokeMethod(
            qApp, [where, text] { where ? where->setText(text) : void(); }, Qt::QueuedConnection);
    });
}
