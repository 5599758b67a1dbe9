#include "check/schema.h"

#include "db/dialect/sql_tokens.h"

#include <QFile>
#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

using Tokens = std::vector<SqlToken>;

QString textOf(const SqlToken &token) {
    return QString::fromUtf8(token.text.data(), qsizetype(token.text.size()));
}

/// One statement after the other, as items: what the commas between its outer parentheses part.
class SchemaReader {
public:
    explicit SchemaReader(const QByteArray &sql)
        : m_tokens(sqlTokens({sql.constData(), size_t(sql.size())})) {}

    std::vector<SchemaTable> read() {
        for (; m_i + 2 < m_tokens.size(); toEnd())
            if (m_tokens[m_i].isWord("CREATE"))
                m_tokens[m_i + 1].isWord("TABLE") ? readTable() : readIndex();
        return std::move(m_tables);
    }

private:
    void toEnd() {
        while (m_i < m_tokens.size() && !m_tokens[m_i].isSign(";"))
            ++m_i;
        ++m_i;
    }

    /// The items between the parenthesis at m_i and the one that closes it.
    std::vector<Tokens> items() {
        std::vector<Tokens> found(1);
        int depth = 0;
        for (; m_i < m_tokens.size(); ++m_i) {
            const SqlToken &token = m_tokens[m_i];
            depth += token.isSign("(") ? 1 : token.isSign(")") ? -1 : 0;
            if (depth == 0)
                break;
            if (depth == 1 && token.isSign(","))
                found.emplace_back();
            else if (depth > 1 || !token.isSign("("))
                found.back().push_back(token);
        }
        return found;
    }

    void readTable() {
        SchemaTable table{textOf(m_tokens[m_i + 2]), {}, {}};
        m_i += 3;
        for (const Tokens &item : items())
            if (item.front().isWord("CONSTRAINT"))
                readConstraint(table, item);
            else
                table.columns.push_back(columnOf(item));
        m_tables.push_back(std::move(table));
    }

    static SchemaColumn columnOf(const Tokens &item) {
        SchemaColumn column{textOf(item[0]), textOf(item[1]).toUpper()};
        if (item.size() > 3 && item[2].isSign("(") && column.type.contains(u"CHAR"))
            column.length = textOf(item[3]).toInt();
        column.required =
            std::ranges::any_of(item, [](const SqlToken &token) { return token.isWord("NOT"); });
        return column;
    }

    static void readConstraint(SchemaTable &table, const Tokens &item) {
        if (!item[2].isWord("PRIMARY"))
            return;
        SchemaIndex key{textOf(item[1]), {}, true};
        for (size_t i = 4; i < item.size(); ++i)
            if (item[i].kind == SqlToken::Kind::Word)
                key.columns += textOf(item[i]);
        table.indexes.push_back(key);
    }

    /// CREATE INDEX name ON table (columns)
    void readIndex() {
        SchemaIndex index{textOf(m_tokens[m_i + 2]), {}};
        const QString on = textOf(m_tokens[m_i + 4]);
        m_i += 5;
        for (const Tokens &item : items())
            index.columns += textOf(item.front());
        const auto table = std::ranges::find(m_tables, on, &SchemaTable::name);
        if (table != m_tables.end())
            table->indexes.push_back(index);
    }

    Tokens m_tokens;
    size_t m_i = 0;
    std::vector<SchemaTable> m_tables;
};

} // namespace

std::vector<SchemaTable> parseSchema(const QString &sql) {
    const QByteArray bytes = sql.toUtf8();
    return SchemaReader(bytes).read();
}

const std::vector<SchemaTable> &programSchema() {
    static const std::vector<SchemaTable> schema = [] {
        QFile file(u":/check/schema.sql"_s);
        return file.open(QIODevice::ReadOnly) ? parseSchema(QString::fromUtf8(file.readAll()))
                                              : std::vector<SchemaTable>();
    }();
    return schema;
}
