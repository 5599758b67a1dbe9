#include "consent/list/list_screens.h"

#include "consent/requests/mail_screen.h"
#include "consent/requests/request_screens.h"

#include <QHash>

using namespace Qt::Literals::StringLiterals;

OpenScreen screenOf(const QString &command) {
    static const QHash<QString, OpenScreen> screens{
        {u"cmdIrai"_s, openRequests},
        {u"cmdAddIrai"_s, openRequestMethods},
        {u"cmdMail"_s, openMailScreen},
        {u"cmdPrint"_s, printRequests},
    };
    return screens.value(command);
}
