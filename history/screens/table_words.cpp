#include "history/screens/table_words.h"

#include "masters/master_description.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList yesNo{u"なし"_s, u"あり"_s};

std::vector<ColumnWords> layoutWords() {
    std::vector<ColumnWords> words;
    const std::pair<QString, QString> documents[] = {{u"iSyokaiDoui"_s, u"初回同意書"_s},
                                                     {u"iSaiDoui"_s, u"再同意書"_s},
                                                     {u"iDouiirai"_s, u"同意依頼書"_s}};
    for (const auto &[column, document] : documents) {
        words.push_back({column + u"ON"_s, document + u"を個別に設定する"_s, ColumnKind::Flag, yesNo});
        words.push_back({column + u"MasTypeNo"_s, document + u"の書式（マッサージ）"_s, ColumnKind::Layout});
        words.push_back({column + u"HariTypeNo"_s, document + u"の書式（鍼灸）"_s, ColumnKind::Layout});
    }
    words.push_back({u"iDouiDispSejyutu"_s, u"施術内容の印字"_s, ColumnKind::Flag, yesNo});
    words.push_back({u"iDouiDispIshidata"_s, u"医師欄の印字"_s, ColumnKind::Flag, yesNo});
    words.push_back({u"iDouiDispRiyouNo"_s, u"利用者番号の印字"_s, ColumnKind::Flag, yesNo});
    return words;
}

std::vector<ColumnWords> periodWords() {
    const QStringList months{u"1 同意期間１の月数"_s, u"2 同意期間２の月数"_s};
    return {{u"tDouiYM"_s, u"年月"_s},
            {u"iDoui1CalcType"_s, u"同意１"_s, ColumnKind::Choice, months},
            {u"iDoui2CalcType"_s, u"同意２"_s, ColumnKind::Choice, months},
            {u"iKikanCalcType"_s,
             u"期間"_s,
             ColumnKind::Choice,
             {u"1 同意日の15日で区切り、月末まで"_s, u"2 翌月1日から"_s}},
            {u"iDouiKikan1"_s, u"同意期間１"_s, ColumnKind::Months},
            {u"iDouiKikan2"_s, u"同意期間２"_s, ColumnKind::Months}};
}

/// What patients repeat of the masters.
std::vector<ColumnWords> repeatedWords() {
    return {{u"cDouiIsiName1"_s, u"同意医師の医師名"_s},
            {u"cDouiIsiKikan1"_s, u"同意医師の医療機関"_s},
            {u"cDouiIsiAdd1"_s, u"同意医師の住所"_s},
            {u"cDouiIsiName2"_s, u"同意医師2の医師名"_s},
            {u"cDouiIsiKikan2"_s, u"同意医師2の医療機関"_s},
            {u"cDouiIsiAdd2"_s, u"同意医師2の住所"_s},
            {u"nSisetsuCd"_s, u"施設"_s, ColumnKind::Facility},
            {u"cSisetsuName"_s, u"施設名"_s},
            {u"cSisetsuAddress"_s, u"施設の住所"_s},
            {u"iSisetsuCode"_s, u"病院"_s, ColumnKind::Facility},
            {u"iIsiCd2"_s, u"医師2"_s, ColumnKind::Doctor},
            {u"cHokenJName"_s, u"保険者名"_s}};
}

ColumnKind kindOf(MasterField::Kind kind) {
    switch (kind) {
    case MasterField::Tick:
        return ColumnKind::Flag;
    case MasterField::Date:
        return ColumnKind::Date;
    case MasterField::Choice:
        return ColumnKind::Choice;
    case MasterField::Facility:
    case MasterField::Home:
        return ColumnKind::Facility;
    case MasterField::Doctor:
        return ColumnKind::Doctor;
    case MasterField::Insurer:
        return ColumnKind::Insurer;
    case MasterField::Counsellor:
        return ColumnKind::Counsellor;
    case MasterField::Staff:
        return ColumnKind::Staff;
    default:
        return ColumnKind::Text;
    }
}

// A form says カナ beside each name; alone the word would not say whose reading it is.
std::vector<ColumnWords> masterWords(const std::vector<MasterField> &fields) {
    std::vector<ColumnWords> words;
    for (const MasterField &field : fields) {
        const ColumnKind kind = kindOf(field.kind);
        const bool isReading = field.caption == u"カナ"_s && !words.empty();
        words.push_back({field.column, isReading ? words.back().caption + u"のカナ"_s : field.caption, kind,
                         kind == ColumnKind::Flag ? yesNo : field.proposals});
    }
    return words;
}

struct Master {
    QString table;
    MasterKind kind; ///< whose columns it has
    ColumnKind keyKind;
    QString noun = {}; ///< where it is not the kind's
};

const std::vector<Master> &masters() {
    static const std::vector<Master> all{
        {u"DOCTOR"_s, MasterKind::Doctor, ColumnKind::Doctor},
        {u"SISETSU"_s, MasterKind::Facility, ColumnKind::Facility},
        {u"STAFF"_s, MasterKind::Staff, ColumnKind::Staff},
        {u"SOUDAN"_s, MasterKind::Counsellor, ColumnKind::Counsellor},
        {u"CAREMANE"_s, MasterKind::Counsellor, ColumnKind::Text, u"ケアマネージャー"_s},
        // The patient is told by his number already.
        {u"RIYOUSHA"_s, MasterKind::Patient, ColumnKind::Text},
        {u"RIYOUSHA_SUB"_s, MasterKind::Patient, ColumnKind::Text}};
    return all;
}

} // namespace

TableWords::TableWords(const QString &table) : m_noun(table) {
    if (table == u"RIYOUSHA_DOUI_REC"_s) {
        m_noun = u"同意"_s;
        m_telling = {u"tDouiDay"_s, u"tDouiKaryoS"_s, u"tDouiKaryoE"_s, u"cDouiIsiName"_s, u"cDouiByoumei"_s};
        for (const ColumnWords &words : consentWords())
            add(words);
    } else if (table == u"DOUIKIROKU"_s) {
        m_noun = u"期間の設定"_s;
        m_telling = {u"tDouiYM"_s, u"iDoui1CalcType"_s, u"iDoui2CalcType"_s, u"iKikanCalcType"_s};
        for (const ColumnWords &words : periodWords())
            add(words);
    } else if (table == u"CORP_SUB"_s) {
        m_noun = u"会社の設定"_s;
    } else {
        for (const Master &master : masters())
            if (master.table == table) {
                const MasterDescription description = describeMaster(master.kind);
                m_noun = master.noun.isEmpty() ? description.noun : master.noun;
                m_keyKind = master.keyKind;
                m_telling = {description.nameColumn};
                for (const ColumnWords &words : masterWords(description.fields))
                    add(words);
            }
        for (const ColumnWords &words : repeatedWords())
            add(words);
    }
    for (const ColumnWords &words : layoutWords())
        add(words);
}

void TableWords::add(const ColumnWords &words) {
    const QString column = words.column.toLower();
    if (m_places.contains(column))
        return;
    m_places.insert(column, int(m_words.size()));
    m_words.push_back(words);
}

int TableWords::placeOf(const QString &column) const {
    return m_places.value(column.toLower(), int(m_words.size()));
}

ColumnWords TableWords::of(const QString &column) const {
    const int place = placeOf(column);
    return place < int(m_words.size()) ? m_words[size_t(place)] : ColumnWords{column, column};
}
