#include "export/make_csv_form.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "ui_make_csv_form.h"
#include "widgets/enter_moves_on.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString endings[] = {u".csv"_s, u".txt"_s}; // by CsvFileType

bool hasEnding(const QString &name) {
    return std::ranges::any_of(
        endings, [&](const QString &ending) { return name.endsWith(ending, Qt::CaseInsensitive); });
}

QString withEnding(const QString &name, CsvFileType type) {
    return name.isEmpty() || hasEnding(name) ? name : name + endings[int(type)];
}

/// Signs that one of the systems refuses: the folder may be shared by PCs of several.
bool hasForbiddenSign(const QString &name) {
    return std::ranges::any_of(name,
                               [](QChar c) { return c.unicode() < 0x20 || u"\\/:*?\"<>|"_s.contains(c); });
}

// The longest name that systems take, less the mark of a file on its way.
constexpr qsizetype mostBytes = 240;

QString startFolder(const QString &last) {
    if (QFileInfo(last).isDir())
        return last;
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QFileInfo(documents).isDir() ? documents : QDir::homePath();
}

} // namespace

frmMakeCsv::frmMakeCsv(const Environment &environment, QWidget *parent)
    : QDialog(parent), m_environment(environment), m_ui(std::make_unique<Ui::frmMakeCsv>()) {
    m_ui->setupUi(this);
    new EnterMovesOn(this);
    wire();
    resize(fontMetrics().horizontalAdvance(u'漢') * 46, sizeHint().height());
}

frmMakeCsv::~frmMakeCsv() = default;

void frmMakeCsv::wire() {
    connect(m_ui->cmdFolder, &QPushButton::clicked, this, [this] { chooseFolder(); });
    connect(m_ui->cmbType, &QComboBox::currentIndexChanged, this, [this] { changeEnding(); });
    connect(m_ui->cmdOk, &QPushButton::clicked, this, [this] { accept(); });
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, [this] { reject(); });
}

void frmMakeCsv::iInit(const QString &fileName, int rows, int columns) {
    const Result<CsvSettings> kept = readCsvSettings(m_environment.folders);
    if (!kept)
        m_environment.messages.failIn(kept.reason(), u"iInit()でエラー");
    fill(kept ? *kept : CsvSettings());
    if (!fileName.isEmpty())
        m_ui->txtFileName->setText(fileName);
    changeEnding();
    m_ui->lblWhat->setText(u"%L1 行 × %2 列を保存します。"_s.arg(rows).arg(columns));
    m_ui->txtFileName->setFocus();
    m_ui->txtFileName->selectAll();
}

void frmMakeCsv::fill(const CsvSettings &settings) {
    m_ui->txtFolder->setText(QDir::toNativeSeparators(startFolder(settings.folder)));
    m_ui->txtFileName->setText(settings.fileName);
    m_ui->cmbType->setCurrentIndex(int(settings.type));
    m_ui->cmbSection->setCurrentIndex(settings.section());
    m_ui->cmbCode->setCurrentIndex(int(settings.format.encoding));
    m_ui->chkQuote->setChecked(settings.format.quoted);
    m_ui->chkHeading->setChecked(settings.format.headings);
    m_ui->chkOpen->setChecked(settings.openFolder);
}

void frmMakeCsv::take() {
    m_settings.folder = QDir::cleanPath(QDir::fromNativeSeparators(m_ui->txtFolder->text().trimmed()));
    m_settings.type = CsvFileType(m_ui->cmbType->currentIndex());
    m_settings.fileName = withEnding(m_ui->txtFileName->text().trimmed(), m_settings.type);
    m_settings.setSection(m_ui->cmbSection->currentIndex());
    m_settings.format.quoted = m_ui->chkQuote->isChecked();
    m_settings.format.headings = m_ui->chkHeading->isChecked();
    m_settings.format.encoding = CsvEncoding(m_ui->cmbCode->currentIndex());
    m_settings.openFolder = m_ui->chkOpen->isChecked();
}

QString frmMakeCsv::CsvFileName() const {
    return QDir(m_settings.folder).filePath(m_settings.fileName);
}

void frmMakeCsv::chooseFolder() {
    const QString chosen = QFileDialog::getExistingDirectory(this, u"保存先のフォルダ"_s,
                                                             startFolder(m_ui->txtFolder->text().trimmed()));
    if (!chosen.isEmpty())
        m_ui->txtFolder->setText(QDir::toNativeSeparators(chosen));
}

// A name with one of the two endings follows the choice; any other stays as it was typed.
void frmMakeCsv::changeEnding() {
    const QString name = m_ui->txtFileName->text();
    const QString &ending = endings[m_ui->cmbType->currentIndex()];
    if (hasEnding(name) && !name.endsWith(ending, Qt::CaseInsensitive))
        m_ui->txtFileName->setText(name.chopped(ending.size()) + ending);
}

bool frmMakeCsv::refuse(const QString &text, const QString &title, QLineEdit *where) {
    m_environment.messages.warn(text, title);
    where->setFocus();
    where->selectAll();
    return false;
}

bool frmMakeCsv::isSound() {
    const QString fileError = u"ファイルエラー"_s;
    const QString &name = m_settings.fileName;
    if (name.isEmpty())
        return refuse(u"保存時のファイル名を入力して下さい。"_s, fileError, m_ui->txtFileName);
    if (hasForbiddenSign(name))
        return refuse(u"ファイル名に次の文字は使えません。\r\n\\ / : * ? \" < > |"_s, fileError,
                      m_ui->txtFileName);
    if (name.toUtf8().size() > mostBytes)
        return refuse(u"ファイル名が長すぎます。短くして下さい。"_s, fileError, m_ui->txtFileName);
    if (!QDir::isAbsolutePath(m_settings.folder) || !QFileInfo(m_settings.folder).isDir())
        return refuse(u"選択したフォルダが存在しません。"_s, u"フォルダエラー"_s, m_ui->txtFolder);
    return !QFileInfo::exists(CsvFileName()) ||
           m_environment.messages.ask(
               u"既に同じ名前のファイルが存在します。\r\n上書きしてもよろしいですか？"_s, u"上書き確認"_s,
               Answer::No);
}

// Choices that cannot be kept are told and stop nothing.
void frmMakeCsv::accept() {
    take();
    if (!isSound())
        return;
    if (const Result<> kept = writeCsvSettings(m_environment.folders, m_settings); !kept)
        m_environment.messages.warn(u"保存の設定を記録できませんでした。\r\n"_s + kept.reason());
    QDialog::accept();
}
