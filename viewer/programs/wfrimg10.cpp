#include "viewer/programs/image_builder.h"

#include <QCoreApplication>
#include <cstdio>

int main(int argc, char **argv) {
    const QCoreApplication application(argc, argv);
    const BuildOutcome outcome = runImageBuilder(QCoreApplication::arguments().mid(1));
    for (const QString &message : outcome.messages)
        std::fprintf(stderr, "%s\n", qUtf8Printable(message));
    return int(outcome.result);
}
