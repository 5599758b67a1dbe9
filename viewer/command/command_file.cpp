#include "viewer/command/command_file.h"

#include "app/base/codepage932.h"
#include "viewer/command/command_line.h"
#include "viewer/layout/paper.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr QStringView ownPaper = u"#256";
constexpr size_t mostSources = 100; // in one report

/// Carries out the lines of one command file. A command that fails leaves its reason in the problem.
class JobReader {
public:
    explicit JobReader(Problem *problem) : m_problem(problem) {}

    bool take(const CommandLine &command);
    /// After the last line.
    std::optional<Job> finish();

private:
    struct Command {
        QStringView keyword;
        qsizetype least, most; ///< arguments
        bool (JobReader::*carryOut)();
    };
    static const Command commands[];

    bool setLayout();
    bool setTitle();
    bool setReportTitle();
    bool setDataText();
    bool setImageField();
    bool addReport();
    bool setOffsetX() { return readNumber(0, -9999, 9999, &m_job.offsetX); }
    bool setOffsetY() { return readNumber(0, -9999, 9999, &m_job.offsetY); }
    bool setZoom() { return readNumber(0, 0, 1000, &m_job.zoom); }
    bool setRepeatStart() { return readNumber(0, 0, 9999, &m_job.repeatStart); }
    bool setPaper();
    bool setItemValue();
    bool showWindow();
    bool print() { return setAction(JobAction::Print); }
    bool printWithDialog() { return setAction(JobAction::PrintWithDialog); }

    bool setAction(JobAction action);
    bool readNumber(int argument, int least, int most, int *number);
    bool readSeparator(int argument, QChar *separator);
    QString argument(int i) const { return m_command->arguments.value(i); }
    bool refuse(const QString &text, int argument = -1);

    Problem *m_problem;
    Job m_job;
    ReportOrder m_report;
    const CommandLine *m_command = nullptr;
};

const JobReader::Command JobReader::commands[] = {
    {u"FileName", 1, 1, &JobReader::setLayout},
    {u"Title", 1, 1, &JobReader::setTitle},
    {u"SetTitle", 1, 1, &JobReader::setReportTitle},
    {u"SetDataText", 2, 5, &JobReader::setDataText},
    {u"SetImageField", 1, 1, &JobReader::setImageField},
    {u"SetReport", 1, 1, &JobReader::setLayout},
    {u"AddReport", 0, 0, &JobReader::addReport},
    {u"PrintOffsetX", 1, 1, &JobReader::setOffsetX},
    {u"PrintOffsetY", 1, 1, &JobReader::setOffsetY},
    {u"PrintZoom", 1, 1, &JobReader::setZoom},
    {u"SectionRepeatStart", 1, 1, &JobReader::setRepeatStart},
    {u"PrintPaper", 1, 1, &JobReader::setPaper},
    {u"SetItemValue", 2, 2, &JobReader::setItemValue},
    {u"ShowWindow", 0, 1, &JobReader::showWindow},
    {u"PrintOut", 0, 0, &JobReader::print},
    {u"PrintOutFromDialog", 0, 0, &JobReader::printWithDialog},
};

bool JobReader::take(const CommandLine &line) {
    m_command = &line;
    const Command *command = std::ranges::find_if(commands, [&](const Command &known) {
        return known.keyword.compare(line.keyword, Qt::CaseInsensitive) == 0;
    });
    if (command == std::end(commands))
        return refuse(u"命令「%1」はありません。"_s.arg(line.keyword.left(40)));
    if (line.arguments.size() < command->least || line.arguments.size() > command->most)
        return refuse(u"%1 の引数の数が正しくありません。"_s.arg(command->keyword));
    return (this->*command->carryOut)();
}

bool JobReader::setLayout() {
    if (argument(0).isEmpty())
        return refuse(u"レイアウトのファイル名がありません。"_s, 0);
    if (!m_report.layout.isEmpty() && m_report.layout != argument(0))
        return refuse(u"レイアウトが2つあります。帳票の間に AddReport が必要です。"_s, 0);
    m_report.layout = argument(0);
    return true;
}

bool JobReader::setTitle() {
    m_job.title = argument(0);
    return true;
}

/// The first report's title stands for a document that has none.
bool JobReader::setReportTitle() {
    m_report.title = argument(0);
    if (m_job.title.isEmpty())
        m_job.title = m_report.title;
    return true;
}

/// The last argument: a number other than 0 says that there is no header row. The word True does not: what is
/// merged are the same files as elsewhere, and those have one.
bool JobReader::setDataText() {
    SourceOrder source{argument(0), argument(1), {}};
    if (source.name.isEmpty() || source.path.isEmpty())
        return refuse(u"データ名またはデータファイル名がありません。"_s, 0);
    if (!readSeparator(2, &source.format.separator) || !readSeparator(3, &source.format.quote))
        return false;
    bool isNumber = false;
    source.format.header = argument(4).toInt(&isNumber) == 0 || !isNumber;

    const auto same =
        std::ranges::find_if(m_report.sources, [&](const auto &old) { return old.name == source.name; });
    if (same != m_report.sources.end())
        *same = source;
    else if (m_report.sources.size() == mostSources)
        return refuse(u"1つの帳票のデータが多すぎます。"_s);
    else
        m_report.sources.push_back(source);
    return true;
}

bool JobReader::setImageField() {
    m_report.imageItems.append(argument(0));
    return true;
}

bool JobReader::addReport() {
    if (m_report.layout.isEmpty())
        return refuse(u"AddReport の前の帳票にレイアウト（SetReport）がありません。"_s);
    m_job.reports.push_back(std::move(m_report));
    m_report = {};
    return true;
}

bool JobReader::setPaper() {
    if (argument(0) != ownPaper && !paperSize(argument(0)))
        return refuse(u"用紙「%1」はありません。"_s.arg(argument(0).left(40)), 0);
    m_job.paper = argument(0);
    return true;
}

bool JobReader::setItemValue() {
    m_report.values.push_back({argument(0), argument(1)});
    return true;
}

bool JobReader::showWindow() {
    if (!m_command->arguments.isEmpty() && !readNumber(0, 0, 99, &m_job.windowStyle))
        return false;
    return setAction(JobAction::Show);
}

bool JobReader::setAction(JobAction action) {
    if (m_job.action.value_or(action) != action)
        return refuse(u"表示と印刷の命令が2つあります。"_s);
    m_job.action = action;
    return true;
}

bool JobReader::readNumber(int i, int least, int most, int *number) {
    bool isNumber = false;
    const int value = argument(i).toInt(&isNumber);
    if (!isNumber || value < least || value > most)
        return refuse(
            u"%1 には %2 から %3 の数を指定してください。"_s.arg(m_command->keyword).arg(least).arg(most), i);
    *number = value;
    return true;
}

bool JobReader::readSeparator(int i, QChar *separator) {
    const QString text = argument(i);
    if (text.size() > 1)
        return refuse(u"区切り文字と引用符は1文字で指定してください。"_s, i);
    if (!text.isEmpty())
        *separator = text[0];
    return true;
}

bool JobReader::refuse(const QString &text, int argument) {
    m_problem->column = argument < 0 ? 0 : m_command->columns[size_t(argument)];
    m_problem->text = text;
    return false;
}

std::optional<Job> JobReader::finish() {
    m_problem->column = 0;
    if (!m_report.layout.isEmpty()) {
        m_job.reports.push_back(std::move(m_report));
        return std::move(m_job);
    }
    m_problem->text = m_job.reports.empty() ? u"帳票の指定（FileName、SetReport）がありません。"_s
                                            : u"最後の帳票にレイアウト（SetReport）がありません。"_s;
    m_problem->text += u"ファイルが途中で切れている可能性があります。"_s;
    return std::nullopt;
}

} // namespace

QSizeF Job::paperSize() const {
    return ::paperSize(paper).value_or(QSizeF());
}

std::optional<Job> readCommandFile(const QByteArray &bytes, const QString &name, Problem *problem) {
    *problem = {name, 0, 0, {}};
    if (looksLikeUtf8(bytes)) {
        problem->text = u"UTF-8 のファイルです。Shift_JIS（コードページ932）で保存してください。"_s;
        return std::nullopt;
    }
    JobReader reader(problem);
    const QString text = decode932(bytes);
    for (QStringView line : QStringView(text).tokenize(u'\n')) {
        ++problem->line;
        if (line.contains(QChar::ReplacementCharacter) || line.contains(QChar::Null)) {
            problem->text = u"Shift_JIS（コードページ932）ではない文字があります。"_s;
            return std::nullopt;
        }
        line = line.trimmed();
        if (line.isEmpty())
            continue;
        const std::optional<CommandLine> command = splitCommandLine(line, problem);
        if (!command || !reader.take(*command))
            return std::nullopt;
    }
    return reader.finish();
}
