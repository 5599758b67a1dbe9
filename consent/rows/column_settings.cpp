#include "consent/rows/column_settings.h"

#include "app/base/folders.h"
#include "app/base/ini_file.h"

#include <QFileInfo>
#include <QStringList>
#include <algorithm>
#include <array>

using namespace Qt::Literals::StringLiterals;

namespace {

const QString section = u"同意記録項目"_s;
// Each a list in the order of the items, but for the last.
const QString shownKey = u"表示"_s;
const QString widthKey = u"幅"_s;
const QString placeKey = u"順序"_s; ///< counted from 1
const QString frozenKey = u"固定列数"_s;

QString pathOf(const Folders &folders) {
    return Folders::file(folders.program(), u"DATA\\同意管理表示設定.ini"_s);
}

ColumnSettings::Column firstOf(const ListColumnInfo &info) {
    const auto narrow = std::ranges::count_if(info.caption, [](QChar sign) { return sign.unicode() < 0x80; });
    const int caption = int(info.caption.size() - narrow / 2);
    return {info.column, info.column < ListColumn::OnPaper, 2 * (std::max(caption, info.characters) + 1)};
}

/// The numbers of a list, by column; what is none or out of bounds is left out.
class Numbers {
public:
    Numbers(const QString &text, int least, int most) {
        const QStringList texts = text.split(u',');
        m_numbers.fill(-1);
        for (size_t item = 0; item < listItems().size(); ++item) {
            bool isNumber = false;
            const int number = texts.value(qsizetype(item)).trimmed().toInt(&isNumber);
            if (isNumber && number >= least && number <= most)
                m_numbers[size_t(listItems()[item])] = number;
        }
    }
    int of(ListColumn column, int otherwise) const {
        const int number = m_numbers[size_t(column)];
        return number < 0 ? otherwise : number;
    }

private:
    std::array<int, size_t(ListColumn::Count)> m_numbers;
};

QString listed(const ColumnSettings &settings, auto number) {
    QStringList texts;
    for (const ListColumn item : listItems()) {
        const auto at = std::ranges::find(settings.columns, item, &ColumnSettings::Column::column);
        texts.append(QString::number(number(at - settings.columns.begin())));
    }
    return texts.join(u',');
}

} // namespace

ColumnSettings ColumnSettings::first() {
    ColumnSettings settings;
    for (const ListColumnInfo &info : listColumns())
        settings.columns.push_back(firstOf(info));
    settings.frozen = int(ListColumn::Name) + 1;
    return settings;
}

Result<ColumnSettings> readColumnSettings(const Folders &folders) {
    ColumnSettings settings = ColumnSettings::first();
    clsOplIniFile ini;
    ini.iInit(pathOf(folders)); // a missing file is bound all the same
    if (!QFileInfo::exists(ini.path()))
        return settings;
    if (const Result<> readable = ini.readable(); !readable)
        return Failure{readable.reason()};
    const auto text = [&](const QString &key) { return ini.csGetProfileString(section, key); };
    const int all = int(settings.columns.size());
    const Numbers shown(text(shownKey), 0, 1),
        widths(text(widthKey), ColumnSettings::narrowest, ColumnSettings::widest),
        places(text(placeKey), 1, all);
    for (ColumnSettings::Column &column : settings.columns) {
        column.shown = shown.of(column.column, column.shown) != 0;
        column.width = widths.of(column.column, column.width);
    }
    // Columns without a place, added since the file was written, follow in their first order.
    std::ranges::stable_sort(settings.columns, {}, [&](const ColumnSettings::Column &column) {
        return places.of(column.column, all + 1);
    });
    if (std::ranges::none_of(settings.columns, &ColumnSettings::Column::shown))
        std::ranges::for_each(settings.columns, [](auto &column) { column.shown = true; });
    settings.frozen = std::clamp(ini.nGetProfileLong(section, frozenKey, settings.frozen), 0, all);
    return settings;
}

Result<> writeColumnSettings(const Folders &folders, const ColumnSettings &settings) {
    const std::vector<ColumnSettings::Column> &columns = settings.columns;
    clsOplIniFile ini;
    ini.iInit(pathOf(folders));
    const std::pair<QString, QString> entries[] = {
        {shownKey, listed(settings, [&](auto at) { return columns[size_t(at)].shown ? 1 : 0; })},
        {widthKey, listed(settings, [&](auto at) { return columns[size_t(at)].width; })},
        {placeKey, listed(settings, [](auto at) { return int(at) + 1; })},
        {frozenKey, QString::number(settings.frozen)}};
    for (const auto &[key, value] : entries)
        if (ini.iWriteProfileString(section, key, value) != 0)
            return Failure{ini.sErrMsg()};
    return {};
}
