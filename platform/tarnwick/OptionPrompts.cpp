#include "OptionPrompts.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>

namespace tarnwick {

bool loadOptions(OptionFile &options, const PathRoots &roots, UserPrompts &prompts)
{
    try {
        return options.load(roots);
    } catch (const Error &error) {
        prompts.error(messages::kOptionsUnreadable, error.text());
        return false;
    }
}

void storeOptions(OptionFile &options, const PathRoots &roots, UserPrompts &prompts)
{
    try {
        options.store(roots);
    } catch (const Error &error) {
        prompts.status(messages::kOptionsNotStored, error.text());
    }
}

void changeStoredOptions(OptionFile &options, const PathRoots &roots, const std::function<void()> &change)
{
    // Another holds the lock for the moment of writing a small file. Where no lock can be made (a folder that cannot be
    // written to) nothing will be stored either.
    constexpr int kPatienceMs = 1000;
    const QString path = options.path().installationPath(roots);
    QDir().mkpath(QFileInfo(path).absolutePath());
    QLockFile lock(path + QStringLiteral(".lock"));
    lock.tryLock(kPatienceMs);
    try {
        options.loadIfChanged(roots);
    } catch (const Error &) {
        // What is damaged or newer has been said at the start, and storing treats it with care.
    }
    change();
    options.store(roots);
}

void changeOptions(OptionFile &options, const PathRoots &roots, UserPrompts &prompts,
                   const std::function<void()> &change)
{
    try {
        changeStoredOptions(options, roots, change);
    } catch (const Error &error) {
        prompts.status(messages::kOptionsNotStored, error.text());
    }
}

} // namespace tarnwick
