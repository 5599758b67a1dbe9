#include "print/request_letter/letter_options.h"

#include "app/base/settings.h"

LetterOptions keptLetterOptions(const Folders &folders, const QDate &today) {
    const Settings settings(folders);
    LetterOptions options;
    options.day = today;
    options.grouped = settings.isOn(Setting::依頼書出力方式);
    options.printPractitioner = settings.isOn(Setting::施術者氏名の印字);
    const int practitioner = settings.number(Setting::施術者氏名選択);
    options.practitioner = practitioner >= 0 && practitioner < mostPractitioners ? practitioner : 0;
    return options;
}

Result<> keepLetterOptions(const Folders &folders, const LetterOptions &options) {
    Settings settings(folders);
    if (settings.iSwitch(Setting::依頼書出力方式, options.grouped) == 0 &&
        settings.iSwitch(Setting::施術者氏名の印字, options.printPractitioner) == 0 &&
        settings.iWrite(Setting::施術者氏名選択, options.practitioner) == 0)
        return {};
    return Failure{settings.sErrMsg()};
}
