#include "import/identity.h"

#include "import/import_values.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const std::vector<size_t> &peopleOf(const QHash<QString, std::vector<size_t>> &people, const QString &key) {
    static const std::vector<size_t> none;
    const auto found = people.constFind(key);
    return found == people.constEnd() ? none : *found;
}

} // namespace

Identity::Identity(const ImportDescription &description, const StoredRows &stored)
    : m_description(description) {
    const QString name = description.nameColumn(), kana = description.kanaColumn();
    for (int row = 0; row < stored.count(); ++row) {
        Person person = personOf(stored.code(row),
                                 {{name, stored.value(row, name)},
                                  {kana, stored.value(row, kana)},
                                  {description.secondColumn, stored.value(row, description.secondColumn)}});
        person.stored = row;
        add(std::move(person));
    }
}

Identity::Person Identity::personOf(const QString &code, const QHash<QString, QString> &values) const {
    const QString second = values.value(m_description.secondColumn);
    return {code, comparedName(values.value(m_description.nameColumn())),
            comparedName(values.value(m_description.kanaColumn())), comparedName(second), second};
}

size_t Identity::add(Person person) {
    const size_t at = m_people.size();
    if (!person.code.isEmpty())
        m_byCode.insert(person.code, at);
    m_byName[person.name].push_back(at);
    // With a birthday, a reading is nearly a name.
    if (m_description.kind == ImportKind::Patients && !person.kana.isEmpty() && !person.second.isEmpty())
        m_byReading[person.kana + u'/' + person.second].push_back(at);
    m_people.push_back(std::move(person));
    return at;
}

Identity::Agreement Identity::agreement(const Person &left, const Person &right) const {
    if (!left.second.isEmpty() && !right.second.isEmpty())
        return left.second == right.second ? Agreement::Same : Agreement::Different;
    if (!left.kana.isEmpty() && !right.kana.isEmpty())
        return left.kana == right.kana ? Agreement::Same : Agreement::Different;
    return m_description.nameAlone ? Agreement::Same : Agreement::Unclear;
}

QString Identity::who(const Person &person) const {
    return person.stored < 0
               ? u"%L1 行目"_s.arg(person.line)
               : u"番号 %1%2"_s.arg(person.code,
                                    person.shownSecond.isEmpty() || m_description.kind != ImportKind::Patients
                                        ? QString()
                                        : u"、"_s + person.shownSecond);
}

Identity::Found Identity::byCode(const Person &person, size_t known) const {
    const Person &there = m_people[known];
    const bool sameSecond = !person.second.isEmpty() && person.second == there.second;
    if (person.name == there.name || sameSecond)
        return {there.stored};
    return {-1, u"番号 %1 は別の%2が使っています"_s.arg(person.code, m_description.noun)};
}

Identity::Found Identity::byName(const Person &person) const {
    std::vector<size_t> same, unclear, others;
    for (const size_t at : peopleOf(m_byName, person.name))
        switch (agreement(person, m_people[at])) {
        case Agreement::Same:
            same.push_back(at);
            break;
        case Agreement::Unclear:
            unclear.push_back(at);
            break;
        case Agreement::Different:
            others.push_back(at);
        }
    if (same.size() == 1) {
        const Person &there = m_people[same.front()];
        if (there.stored < 0 || person.code.isEmpty())
            return {there.stored,
                    there.stored < 0 ? u"%1と同じ%2です"_s.arg(who(there), m_description.noun) : QString()};
        return {-1, u"同じ%1が%2で登録されています"_s.arg(m_description.noun, who(there))};
    }
    if (same.size() > 1)
        return {-1, u"同じ%1が%L2件あり、どれか決められません（%3 ほか）"_s.arg(m_description.noun)
                        .arg(same.size())
                        .arg(who(m_people[same.front()]))};
    if (!unclear.empty() && person.code.isEmpty())
        return {-1, u"同じ名前の%1（%2）と同じかどうか決められません。番号かカナ%3を入れてください"_s.arg(
                        m_description.noun, who(m_people[unclear.front()]),
                        m_description.kind == ImportKind::Patients ? u"・生年月日"_s : QString())};
    const auto &alike = peopleOf(m_byReading, person.kana + u'/' + person.second);
    if (!alike.empty() && !person.kana.isEmpty() && !person.second.isEmpty() && person.code.isEmpty())
        return {
            -1,
            u"カナと生年月日が同じ%1（%2）がいます。同じ方ならその番号を、別の方なら新しい番号を入れてください"_s
                .arg(m_description.noun, who(m_people[alike.front()]))};
    others.insert(others.end(), unclear.begin(), unclear.end());
    return {-1,
            {},
            others.empty()
                ? QString()
                : u"同じ名前の%1があります（%2）"_s.arg(m_description.noun, who(m_people[others.front()]))};
}

Identity::Found Identity::remembered(const Found &found, const Person &person, int line) {
    if (!found.fault.isEmpty())
        return found;
    if (found.stored < 0) {
        Person added = person;
        added.line = line;
        add(std::move(added));
        return found;
    }
    Person &there = m_people[size_t(found.stored)];
    if (there.line > 0)
        return {-1, u"%L1 行目と同じ%2です"_s.arg(there.line).arg(m_description.noun)};
    there.line = line;
    return found;
}

Identity::Found Identity::find(const QString &code, const QHash<QString, QString> &values, int line) {
    const Person person = personOf(code, values);
    const auto known = m_byCode.constFind(code);
    if (code.isEmpty() || known == m_byCode.constEnd())
        return remembered(byName(person), person, line);
    if (m_people[*known].stored < 0)
        return {-1, u"%L1 行目と同じ番号です"_s.arg(m_people[*known].line)};
    return remembered(byCode(person, *known), person, line);
}
