#include <app/logic/AppOptions.h>
#include <cli/CommandTable.h>
#include <cstdio>
#include <QCoreApplication>
#include <QDir>
#include <tarnwick/base/Error.h>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;

/// arvo-make-manual FOLDER: writes the manual pages and the completions of the programs. Used by the build.
int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QString folder = QCoreApplication::arguments().value(1);
    try {
        for (const tarnwick::ProgramManual &manual : {app::arvoManual(), cli::programManual()}) {
            const QString name = QString::fromUtf16(manual.program.name);
            QDir(folder).mkpath(u"completions"_s);
            tarnwick::writeFileAtomically(folder + u'/' + name + u".1"_s, tarnwick::manualPage(manual));
            tarnwick::writeFileAtomically(folder + u"/completions/"_s + name, tarnwick::bashCompletion(manual));
        }
    } catch (const tarnwick::Error &error) {
        std::fprintf(stderr, "%s\n", qUtf8Printable(error.text()));
        return 1;
    }
    return 0;
}
