#include "masters/master_entry.h"

#include "app/base/text.h"
#include "db/tables/base/consent_layout_columns.h"
#include "history/logged_transaction.h"
#include "masters/postal_codes.h"

#include <limits>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString overtakenText = u"他のＰＣからデータが更新されてますので保存できません｡ "_s;
const QString takenText = u"同じIDのデータが存在します。 "_s;

QString whyFieldIsWrong(const MasterField &field, const QString &text) {
    if (field.kind == MasterField::Code && text.toLongLong() > std::numeric_limits<qint32>::max())
        return u"IDNo.は %L1 までです。"_s.arg(std::numeric_limits<qint32>::max());
    if (field.kind == MasterField::PostalCode && !text.isEmpty() && postalDigits(text).size() != 7)
        return u"郵便番号は7桁の数字で入力してください。"_s;
    if (field.kind == MasterField::Date && !text.isEmpty() &&
        !QDate::fromString(text, u"yyyy/MM/dd").isValid())
        return u"「%1」の「%2」は日付ではありません。"_s.arg(field.caption, text);
    if (field.kind != MasterField::Tick && byteLength932(text) > field.bytes)
        return u"「%1」が長すぎます。全角 %2 文字（半角 %3 文字）までにしてください。"_s.arg(field.caption)
            .arg(field.bytes / 2)
            .arg(field.bytes);
    return {};
}

template <class Work> void eachLayout(Work work) {
    for (const auto &column : consentLayoutColumns<ConsentLayoutSettings>)
        work(column.name.toString(), std::get<Nullable<short> ConsentLayoutSettings::*>(column.member));
}

} // namespace

MasterEntry::MasterEntry(const MasterDescription &description, cT_ADODB &db)
    : m_description(description),
      m_db(db),
      m_store(makeMasterStore(description.kind, db, description.branch)) {}

Result<> MasterEntry::openNew() {
    const Result<qint64> highest = m_store->highestCode();
    if (!highest)
        return Failure{highest.reason()};
    m_isNew = true;
    m_read = m_description.preset;
    m_read.insert(m_description.codeColumn, QString::number(*highest + 1));
    m_values = m_read;
    return {};
}

// Two PCs that enter a row at once were proposed the same number.
Result<> MasterEntry::takeFreeNumber() {
    const Result<qint64> highest = m_store->highestCode();
    if (!highest)
        return Failure{highest.reason()};
    if (*highest >= code().toLongLong())
        m_values[m_description.codeColumn] = m_read[m_description.codeColumn] = QString::number(*highest + 1);
    return {};
}

Result<> MasterEntry::open(const QString &code) {
    const Result<std::optional<MasterValues>> row = m_store->read(code);
    if (!row)
        return Failure{m_description.unreadable + u"\r\n"_s + row.reason()};
    if (!*row)
        return Failure{m_description.unreadable};
    m_isNew = false;
    m_read = **row;
    m_values = m_read;
    return {};
}

Result<> MasterEntry::reread() {
    if (m_isNew)
        return {};
    const Result<std::optional<MasterValues>> row = m_store->read(code());
    if (!row || !*row)
        return Failure{m_description.unreadable + u"\r\n"_s + row.reason()};
    for (const auto &[column, stored] : (*row)->asKeyValueRange()) {
        const bool changedHere = m_values.value(column) != m_read.value(column);
        if (changedHere && stored != m_read.value(column) && stored != m_values.value(column))
            continue;
        m_read[column] = stored;
        if (!changedHere)
            m_values[column] = stored;
    }
    return {};
}

void MasterEntry::setValue(const QString &column, const QString &typed) {
    // 007 and 7 are one number.
    const bool isCode = column == m_description.codeColumn && !typed.isEmpty();
    const QString text = isCode ? QString::number(typed.toLongLong()) : typed;
    m_values[column] = text.isEmpty() ? QString() : text;
    if (text.isEmpty() && m_read.value(column).isEmpty())
        m_values[column] = m_read.value(column);
    if (!m_read.contains(column) && text.isEmpty())
        m_values.remove(column);
}

ConsentLayoutSettings MasterEntry::layouts() const {
    ConsentLayoutSettings settings;
    eachLayout([&](const QString &column, auto member) {
        if (!value(column).isEmpty())
            settings.*member = value(column).toShort();
    });
    return settings;
}

void MasterEntry::setLayouts(const ConsentLayoutSettings &settings) {
    eachLayout([&](const QString &column, auto member) {
        const Nullable<short> &number = settings.*member;
        setValue(column, number.isNull() ? QString() : QString::number(short(number)));
    });
}

MasterObjection MasterEntry::whyWrong() const {
    if (code().toLongLong() == 0)
        return {m_description.codeMissing, m_description.codeColumn};
    if (value(m_description.nameColumn).trimmed().isEmpty())
        return {m_description.nameMissing, m_description.nameColumn};
    for (const MasterField &field : m_description.fields)
        if (m_isNew || value(field.column) != m_read.value(field.column))
            if (const QString why = whyFieldIsWrong(field, value(field.column)); !why.isEmpty())
                return {why, field.column};
    return {};
}

Result<MasterObjection> MasterEntry::whyOvertaken() {
    const Result<std::optional<MasterValues>> row = m_store->read(code());
    if (!row)
        return Failure{row.reason()};
    if (m_isNew)
        return *row && !isNumberProposed() ? MasterObjection{takenText, m_description.codeColumn}
                                           : MasterObjection();
    if (!*row)
        return MasterObjection{u"他のＰＣでデータが削除されているため、保存できません。"_s,
                               m_description.nameColumn};
    // tUpDateTime alone would not tell two writes of one moment apart.
    return **row == m_read ? MasterObjection() : MasterObjection{overtakenText, m_description.nameColumn};
}

std::vector<ReplacedText> MasterEntry::lostTexts() const {
    std::vector<ReplacedText> lost;
    for (const MasterField &field : m_description.fields)
        if (const QString text = value(field.column); text != m_read.value(field.column) && !fits932(text))
            lost.push_back({field.caption, text});
    return lost;
}

Result<MasterUses> MasterEntry::uses() {
    return m_isNew ? MasterUses() : m_store->uses(code());
}

bool MasterEntry::changesRepeated() const {
    return !m_isNew && std::ranges::any_of(m_description.repeated, [this](const QString &column) {
        return value(column) != m_read.value(column);
    });
}

// A server that keeps texts in a code page of its own turns what that lacks into '?' without a word.
QString MasterEntry::storedOtherwise(const MasterValues &stored) const {
    QStringList fields;
    for (const MasterField &field : m_description.fields)
        if (trimRight(stored.value(field.column)) != trimRight(value(field.column)))
            fields += u"%1「%2」"_s.arg(field.caption, value(field.column));
    return fields.join(u"\r\n");
}

template <class Work> MasterOutcome MasterEntry::inTransaction(const QString &verb, const Work &work) {
    return againAfterDeadlock(m_db, [&] { return once({m_description.noun + verb}, work); });
}

template <class Work> MasterOutcome MasterEntry::once(const Operation &operation, const Work &work) {
    LoggedTransaction transaction(m_db, operation);
    if (!transaction.begun())
        return {MasterOutcome::Failed, transaction.said().trimmed()};
    if (const Result<> locked = m_store->lock(code(), m_isNew); !locked)
        return {MasterOutcome::Failed, locked.reason()};
    if (const Result<> numbered = m_isNew && isNumberProposed() ? takeFreeNumber() : Result<>(); !numbered)
        return {MasterOutcome::Failed, numbered.reason()};
    const Result<MasterObjection> overtaken = whyOvertaken();
    if (!overtaken)
        return {MasterOutcome::Failed, overtaken.reason()};
    if (!overtaken->text.isEmpty())
        return {MasterOutcome::Refused, overtaken->text};
    if (const Result<> watched = m_store->watch(transaction, code()); !watched)
        return {MasterOutcome::Failed, watched.reason()};
    MasterOutcome outcome = work(transaction);
    if (outcome.kind == MasterOutcome::Done)
        if (const Result<> committed = transaction.commit(); !committed)
            return {MasterOutcome::Failed, committed.reason().trimmed()};
    return outcome;
}

MasterOutcome MasterEntry::save(bool copy) {
    const QString verb = m_isNew ? u"の登録"_s : u"の修正"_s;
    return inTransaction(verb, [&](LoggedTransaction &transaction) -> MasterOutcome {
        const Result<> written = m_isNew ? m_store->insert(m_values) : m_store->update(m_values);
        if (!written)
            return {MasterOutcome::Failed, written.reason()};
        const Result<std::optional<MasterValues>> stored = m_store->read(code());
        if (!stored || !*stored)
            return {MasterOutcome::Failed, m_description.unreadable + u"\r\n"_s + stored.reason()};
        if (const QString fields = storedOtherwise(**stored); !fields.isEmpty())
            return {MasterOutcome::Refused,
                    u"次の項目に、データベースに保存できない文字があるため、登録していません。\r\n"_s +
                        fields};
        if (!copy)
            return {};
        if (const Result<> watched = m_store->watchCopies(transaction, code()); !watched)
            return {MasterOutcome::Failed, watched.reason()};
        if (const Result<> copied = m_store->copy(m_read, m_values); !copied)
            return {MasterOutcome::Failed, copied.reason()};
        return {};
    });
}

MasterOutcome MasterEntry::remove(const MasterUses &told) {
    MasterOutcome outcome = inTransaction(u"の削除"_s, [&](LoggedTransaction &) -> MasterOutcome {
        const Result<MasterUses> now = m_store->uses(code());
        if (!now)
            return {MasterOutcome::Failed, now.reason()};
        if (*now != told)
            return {
                MasterOutcome::Refused,
                u"確認の間に、この%1を使うデータが変わったため、削除していません。もう一度確認してください。"_s
                    .arg(m_description.noun)};
        const Result<> removed = m_store->remove(m_read);
        return removed ? MasterOutcome() : MasterOutcome{MasterOutcome::Failed, removed.reason()};
    });
    if (outcome.text == overtakenText)
        outcome.text = u"他のＰＣからデータが更新されているため、削除していません。"_s;
    return outcome;
}
