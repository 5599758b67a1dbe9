#include "app/base/profile_text.h"

#include "app/base/profile_lines.h"

using namespace Qt::Literals::StringLiterals;

namespace profile {

namespace {

QString unquoted(const QString &value) {
    const bool quoted = value.size() >= 2 && (value.front() == u'"' || value.front() == u'\'') &&
                        value.front() == value.back();
    return quoted ? value.sliced(1, value.size() - 2) : value;
}

QString stripped(const QString &name) {
    qsizetype start = 0;
    qsizetype end = name.size();
    while (start < end && name[start] == u' ')
        ++start;
    while (end > start && name[end - 1] == u' ')
        --end;
    return name.sliced(start, end - start);
}

QByteArray replaced(const QByteArray &file, qsizetype start, qsizetype end, const QByteArray &by) {
    return file.first(start) + by + file.sliced(end);
}

/// Where a new key of the section goes: behind its last key, before comments and blank lines that close it.
qsizetype newKeyPlace(const ProfileLines &lines, size_t header) {
    size_t last = header;
    for (size_t i = header + 1; i < lines.sectionEnd(header); ++i)
        if (lines.lines()[i].kind == ProfileLines::Kind::Key)
            last = i;
    return lines.lines()[last].whole.end;
}

} // namespace

QString decoded(const QByteArray &file) {
    const ProfileLines lines(file);
    return lines.text({lines.textStart(), file.size()});
}

std::optional<QString> value(const QByteArray &file, const QString &section, const QString &key) {
    const ProfileLines lines(file);
    const auto header = lines.section(section);
    const auto line = header ? lines.key(*header, key) : std::nullopt;
    if (!line)
        return {};
    return unquoted(lines.text(lines.lines()[*line].value));
}

qint32 number(QStringView value) {
    qsizetype at = 0;
    while (at < value.size() && (value[at] == u' ' || value[at] == u'\t' || value[at] == u'\v'))
        ++at;
    const bool negative = at < value.size() && value[at] == u'-';
    if (at < value.size() && (value[at] == u'-' || value[at] == u'+'))
        ++at;
    quint32 number = 0; // wraps round at 32 bits, as on Windows
    for (; at < value.size() && value[at] >= u'0' && value[at] <= u'9'; ++at)
        number = number * 10 + quint32(value[at].unicode() - u'0');
    return qint32(negative ? 0 - number : number);
}

Edited withValue(const QByteArray &file, const QString &section, const QString &key, const QString &value) {
    const ProfileLines lines(file);
    bool touched = false;
    const QByteArray valueAndEnd = lines.encoded(u'=' + value + u"\r\n"_s, &touched);
    const auto header = lines.section(section);
    if (!header) {
        bool namesTouched = false;
        const QString names = u'[' + stripped(section) + u"]\r\n"_s + stripped(key);
        const QByteArray added = lines.missingLineEnd() + lines.encoded(names, &namesTouched) + valueAndEnd;
        return {file + added, touched || namesTouched};
    }
    if (const auto line = lines.key(*header, key)) {
        const auto &[kind, whole, name, old] = lines.lines()[*line];
        const QByteArray spelling = file.sliced(name.start, name.end - name.start);
        return {replaced(file, whole.start, whole.end, spelling + valueAndEnd), touched};
    }
    bool keyTouched = false;
    const qsizetype place = newKeyPlace(lines, *header);
    const QByteArray lineEnd = place == file.size() ? lines.missingLineEnd() : QByteArray();
    const QByteArray name = lines.encoded(stripped(key), &keyTouched);
    return {replaced(file, place, place, lineEnd + name + valueAndEnd), touched || keyTouched};
}

QByteArray withoutKey(const QByteArray &file, const QString &section, const QString &key) {
    const ProfileLines lines(file);
    const auto header = lines.section(section);
    const auto line = header ? lines.key(*header, key) : std::nullopt;
    if (!line)
        return file;
    const ProfileLines::Range &whole = lines.lines()[*line].whole;
    return replaced(file, whole.start, whole.end, {});
}

QByteArray withoutSection(const QByteArray &file, const QString &section) {
    const ProfileLines lines(file);
    const auto header = lines.section(section);
    if (!header)
        return file;
    const auto &all = lines.lines();
    const size_t end = lines.sectionEnd(*header);
    QByteArray kept = file.first(all[*header].whole.start);
    for (size_t i = *header; i < end; ++i)
        if (all[i].kind == ProfileLines::Kind::Other)
            kept += file.sliced(all[i].whole.start, all[i].whole.end - all[i].whole.start);
    return kept + file.sliced(all[end - 1].whole.end);
}

} // namespace profile
