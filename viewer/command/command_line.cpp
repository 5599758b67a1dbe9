#include "viewer/command/command_line.h"

using namespace Qt::Literals::StringLiterals;

namespace {

class Splitter {
public:
    Splitter(QStringView line, Problem *problem) : m_line(line), m_problem(problem) {}

    std::optional<CommandLine> split() {
        CommandLine command;
        command.keyword = bareText().toString();
        while (m_at < m_line.size()) {
            ++m_at; // the comma
            skipBlanks();
            command.columns.push_back(int(m_at) + 1);
            if (!addArgument(command.arguments))
                return std::nullopt;
        }
        return command;
    }

private:
    static bool isBlank(QChar c) { return c == u' ' || c == u'\t'; }
    bool isAt(QChar c) const { return m_at < m_line.size() && m_line[m_at] == c; }
    void skipBlanks() {
        while (m_at < m_line.size() && isBlank(m_line[m_at]))
            ++m_at;
    }

    QStringView bareText() {
        const qsizetype start = m_at;
        while (m_at < m_line.size() && m_line[m_at] != u',')
            ++m_at;
        return m_line.sliced(start, m_at - start).trimmed();
    }

    bool addArgument(QStringList &arguments) {
        if (isAt(u'"'))
            return addQuoted(arguments);
        const qsizetype start = m_at;
        arguments.append(bareText().toString());
        const qsizetype quote = arguments.back().indexOf(u'"');
        return quote < 0 || refuse(start + quote, u"引用符（\"）の位置が正しくありません。"_s);
    }

    bool addQuoted(QStringList &arguments) {
        const qsizetype start = m_at;
        QString text;
        for (++m_at; m_at < m_line.size(); ++m_at) {
            if (m_line[m_at] == u'"') {
                ++m_at;
                if (!isAt(u'"'))
                    return endQuoted(arguments, text);
            }
            text += m_line[m_at];
        }
        return refuse(start, u"引用符（\"）が閉じていません。ファイルが途中で切れている可能性があります。"_s);
    }

    bool endQuoted(QStringList &arguments, const QString &text) {
        arguments.append(text);
        skipBlanks();
        return m_at == m_line.size() || isAt(u',') ||
               refuse(m_at, u"閉じた引用符（\"）の後に文字があります。"_s);
    }

    bool refuse(qsizetype at, const QString &text) {
        m_problem->column = int(at) + 1;
        m_problem->text = text;
        return false;
    }

    QStringView m_line;
    Problem *m_problem;
    qsizetype m_at = 0;
};

} // namespace

std::optional<CommandLine> splitCommandLine(QStringView line, Problem *problem) {
    return Splitter(line, problem).split();
}
