#include "export/save_grid.h"

#include "app/base/clock.h"
#include "app/base/environment.h"
#include "app/base/folders.h"
#include "app/base/messages.h"
#include "app/base/platform/desktop.h"
#include "app/base/processes.h"
#include "export/make_csv_form.h"
#include "widgets/grid.h"

#include <QBoxLayout>
#include <QDir>
#include <QFileInfo>
#include <QHeaderView>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A few are enough to see what is meant.
QString some(const QStringList &lines) {
    constexpr qsizetype named = 15;
    const QString more = lines.size() > named ? u"\r\nほか %L1 件"_s.arg(lines.size() - named) : QString();
    return lines.mid(0, named).join(u"\r\n"_s) + more;
}

/// False when the user would rather not write the file.
bool mayLose(Messages &messages, const GridTable &table, frmMakeCsv &form) {
    if (form.format().encoding != CsvEncoding::CodePage932)
        return true;
    const QStringList lost = modMakeCsv::lostCharacters(table, form.format().headings);
    if (lost.isEmpty())
        return true;
    const Answer answer = messages.show(
        {u"シフトJISで保存できない文字があります。\r\n\r\n"_s + some(lost) +
             u"\r\n\r\nはい：UTF-8で、このまま保存します。\r\nいいえ：シフトJISで、置き換えて保存します。\r\n"
             "キャンセル：保存しません。"_s,
         MessageIcon::Question, u"文字コードの確認"_s, MessageButtons::YesNoCancel, Answer::Yes});
    if (answer == Answer::Yes)
        form.setEncoding(CsvEncoding::Utf8);
    return answer != Answer::Cancel;
}

bool mayCompute(Messages &messages, const GridTable &table) {
    const QStringList found = modMakeCsv::formulas(table);
    return found.isEmpty() ||
           messages.show({u"次の項目は、表計算ソフトで開くと計算式として扱われ、違う内容で表示されることが"
                          "あります。\r\n\r\n"_s +
                              some(found) + u"\r\n\r\n内容を変えずに保存します。よろしいですか？"_s,
                          MessageIcon::Question, u"計算式の確認"_s, MessageButtons::OkCancel, Answer::Ok}) ==
               Answer::Ok;
}

void openFolder(const Environment &environment, const QString &folder) {
    Processes &processes = environment.processes;
    const QString program = processes.find(platform::folderProgram(), environment.folders.program());
    if (!program.isEmpty() && processes.start(program, {QDir::toNativeSeparators(folder)}, folder))
        return;
    environment.messages.warn(
        u"フォルダを開くことができません。\r\n（%1）"_s.arg(QDir::toNativeSeparators(folder)));
}

bool write(Messages &messages, const GridTable &table, frmMakeCsv &form) {
    if (!mayLose(messages, table, form) || !mayCompute(messages, table))
        return false;
    const Result<> written = modMakeCsv::write(form.CsvFileName(), table, form.format());
    if (!written)
        messages.fail(u"ファイルの出力に失敗しました。\r\n"_s + written.reason(), u"出力失敗"_s);
    return bool(written);
}

} // namespace

GridTable tableOf(const Grid &grid) {
    const QHeaderView &header = *grid.horizontalHeader();
    std::vector<int> columns;
    for (int place = 0; place < header.count(); ++place)
        if (const int column = header.logicalIndex(place); !header.isSectionHidden(column))
            columns.push_back(column);
    return readTable(*grid.model(), columns);
}

bool saveTable(const Environment &environment, const GridTable &table, const QString &name, QWidget *parent) {
    Messages &messages = environment.messages;
    if (table.rows.empty()) {
        messages.warn(u"出力するデータがありません。"_s);
        return false;
    }
    frmMakeCsv form(environment, parent);
    form.iInit(name + u'_' + environment.clock.today().toString(u"yyyyMMdd"_s) + u".CSV"_s,
               int(table.rows.size()), int(table.columns.size()));
    bool written = false;
    while (!written && form.exec() == QDialog::Accepted)
        written = write(messages, table, form);
    if (!written)
        return false;
    messages.inform(u"下記のフォルダにファイルを出力しました。\r\n（%1）"_s.arg(
                        QDir::toNativeSeparators(form.CsvFileName())),
                    u"出力完了"_s);
    if (form.CsvFileOpn() == 1)
        openFolder(environment, QFileInfo(form.CsvFileName()).path());
    return true;
}

CsvButton::CsvButton(const Environment &environment, Grid &grid, const QString &name)
    : QPushButton(u"CSV出力"_s) {
    setObjectName(u"cmdCsv"_s);
    setToolTip(u"表示している内容をCSVファイルに保存します（Ctrl+Shift+S）"_s);
    setShortcut(QKeySequence(u"Ctrl+Shift+S"_s));
    setAutoDefault(false);
    connect(this, &QPushButton::clicked, this, [this, &environment, &grid, name] {
        // A key leaves a cell's editor open.
        if (grid.commitEditor())
            saveTable(environment, tableOf(grid), name, window());
        else
            environment.messages.warn(u"入力中の項目を確定してから出力してください。"_s);
    });
}

void CsvButton::insert(QBoxLayout &row, QWidget &before) {
    row.insertWidget(row.indexOf(&before), this);
    setTabOrder(before.previousInFocusChain(), this);
}
