#include "viewer/programs/program_arguments.h"

std::optional<ProgramArguments> parseArguments(const QStringList &arguments, const QStringList &known) {
    ProgramArguments parsed;
    QString *value = &parsed.file;
    for (const QString &argument : arguments) {
        const QString name = argument.toLower();
        if (known.contains(name)) {
            if (parsed.options.contains(name))
                return std::nullopt;
            value = &parsed.options[name];
            continue;
        }
        if (!value->isEmpty())
            *value += u' ';
        *value += argument;
    }
    for (const QString &text : std::as_const(parsed.options))
        if (text.isEmpty())
            return std::nullopt;
    return parsed;
}
