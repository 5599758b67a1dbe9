#include "consent/screens/list_screens.h"

#include "consent/screens/entry_screens.h"
#include "consent/screens/mail_screen.h"
#include "consent/screens/request_screens.h"
#include "consent/screens/set_print_screen.h"

#include <QHash>

using namespace Qt::Literals::StringLiterals;

OpenScreen screenOf(const QString &command) {
    static const QHash<QString, OpenScreen> screens{
        {u"cmdNew"_s, openNewConsent},
        {u"cmdEdit"_s, openConsent},
        {u"cmdDelete"_s, openHistory},
        {u"cmdBikou"_s, openRemark},
        {u"cmdIrai"_s, openRequests},
        {u"cmdAddIrai"_s, openRequestMethods},
        {u"cmdMail"_s, openMailScreen},
        {u"cmdPrint"_s, printRequests},
        {u"CmdPrintDouisho"_s, openConsentForms},
        {u"CmdPrintSet"_s, openSetPrint},
        {u"mnNewRiyousha"_s, openNewConsentOfPicked},
    };
    return screens.value(command);
}
