#include "consent/screens/list_print.h"

#include "consent/list/list_filter_panel.h"
#include "consent/list/list_grid.h"
#include "consent/rows/list_columns.h"
#include "consent/rows/list_filter.h"
#include "export/save_grid.h"

#include <QHeaderView>

using namespace Qt::Literals::StringLiterals;

QString orderText(const ListGrid &grid, const ListFilter &filter) {
    const QHeaderView &header = *grid.horizontalHeader();
    const QString caption = u"並び順："_s;
    if (const int column = header.sortIndicatorSection(); column >= 0)
        return caption + listColumn(column).caption +
               (header.sortIndicatorOrder() == Qt::AscendingOrder ? u"（昇順）"_s : u"（降順）"_s);
    return caption + listOrderNames()[int(filter.order)] + u"、"_s +
           patientOrderNames()[int(filter.patientOrder)];
}

QStringList listScope(const ListGrid &grid, const ListFilterPanel &panel, const ListFilter &filter) {
    QStringList texts = filterTexts(filter);
    const RowState state = static_cast<ConsentListModel *>(grid.model())->shownState();
    if (state == RowState::Lapsed)
        texts += u"状態：期限切れ（対象期間外を含む）"_s;
    else if (state != RowState::All)
        texts += u"状態："_s + rowState(state).caption;
    if (!panel.narrowName().isEmpty())
        texts += u"氏名の絞り込み："_s + panel.narrowName();
    if (!panel.narrowKana().isEmpty())
        texts += u"かなの絞り込み："_s + panel.narrowKana();
    return texts;
}

GridDocument listDocument(const ListGrid &grid, const ListFilterPanel &panel, const ListFilter &filter,
                          const QString &counts) {
    GridDocument document;
    document.title = u"同意書一覧"_s;
    document.table = tableOf(grid);
    const QString between = u"　　"_s;
    document.notes = {listScope(grid, panel, filter).join(between),
                      counts + between + orderText(grid, filter)};
    const QStringList headings = document.table.headings();
    for (const ListColumn key : {ListColumn::Number, ListColumn::Name})
        if (const auto at = headings.indexOf(listColumn(int(key)).caption); at >= 0)
            document.keys.push_back(int(at));
    return document;
}
