#include "consent/screens/key_sheet.h"

#include "app/desktop/key_list.h"
#include "consent/screens/list_commands.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The commands that have a key, a group a menu.
QList<KeyGroup> commandKeys() {
    QList<KeyGroup> groups;
    for (int menu = ListCommand::Consent; menu <= ListCommand::Leave; ++menu) {
        KeyGroup group{plainCaption(listMenuCaption(ListCommand::Menu(menu))), {}};
        for (const ListCommand &command : listCommands())
            if (command.menu == menu && !command.key.isEmpty())
                group.lines.append({command.key, command.caption});
        if (!group.lines.isEmpty())
            groups.append(group);
    }
    return groups;
}

} // namespace

GridDocument keySheet(const QWidget &list) {
    QList<KeyGroup> groups = commandKeys();
    groups.append(lettersOf(list));
    groups.append(KeyGroup{u"一覧の中"_s, listGridKeys()});
    QList<QStringList> lines;
    for (const KeyGroup &group : groups) {
        lines.append({QString(), u"【%1】"_s.arg(group.title)});
        for (const KeyLine &line : group.lines)
            lines.append({line.keys, line.what});
    }
    constexpr int across = 4; // lines beside one another, so that all are on one sheet
    const qsizetype rows = (lines.size() + across - 1) / across;
    lines.resize(rows * across, QStringList{QString(), QString()});
    GridDocument document{u"同意書管理　キー一覧"_s, {}, {}, {}};
    for (int column = 0; column < across; ++column)
        document.table.columns.insert(document.table.columns.end(), {{u"キー"_s}, {u"はたらき"_s}});
    for (qsizetype row = 0; row < rows; ++row) {
        QStringList &cells = document.table.rows.emplace_back();
        for (int column = 0; column < across; ++column)
            cells += lines[column * rows + row];
    }
    return document;
}
