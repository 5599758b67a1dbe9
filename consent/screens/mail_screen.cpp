#include "consent/screens/mail_screen.h"

#include "app/base/environment.h"
#include "app/base/messages.h"
#include "consent/list/list_model.h"
#include "consent/screens/list_screens.h"
#include "print/mail/mail_send_form.h"

using namespace Qt::Literals::StringLiterals;

namespace {

/// The targets without the contact mark, to be found again; a few are enough to see what they have in common.
QString withoutContact(const ConsentListModel &model, const std::vector<int> &records) {
    constexpr qsizetype named = 10;
    QStringList names;
    for (const int record : records)
        if (model.values(record).contact != 1)
            names.append(model.who(record) +
                         (model.records().isDeformity(record) ? u"（変形徒手）"_s : QString()));
    const qsizetype more = names.size() - named;
    return names.mid(0, named).join(u"\r\n"_s) + (more > 0 ? u"\r\nほか %1 件"_s.arg(more) : QString());
}

std::vector<MailRow> mailRows(const ConsentListModel &model, const std::vector<int> &records) {
    std::vector<MailRow> rows;
    for (const int record : records) {
        const ConsentRowKey key = model.records().key(record);
        rows.push_back({key.patient, model.records().text(record, ListField::Name), key.nDate,
                        model.records().flag(record, ListField::Sent)});
    }
    return rows;
}

} // namespace

bool openMailScreen(const ListOpening &opening) {
    const std::vector<int> records = opening.model.targetRecords();
    Messages &messages = opening.environment.messages;
    if (records.empty()) {
        messages.warn(u"出力するデータがありません。"_s);
        return false;
    }
    if (const QString names = withoutContact(opening.model, records); !names.isEmpty()) {
        messages.warn(u"「連絡」にチェックがない利用者が「対象」に選ばれています。\r\n"
                      "該当利用者の「対象」を外して下さい。\r\n\r\n"_s +
                      names);
        return false;
    }
    frmMailSend form(opening.environment, opening.parent);
    if (form.Init(opening.db, mailRows(opening.model, records)) != 0) {
        messages.failIn(form.sErrMsg(), u"Init()でエラー");
        return false;
    }
    form.exec();
    return form.rowsChanged();
}
