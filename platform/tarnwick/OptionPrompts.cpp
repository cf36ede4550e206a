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
    // The lock is held only while a small file is written. If the lock cannot be created (folder not writable), the
    // store fails too and reports it.
    constexpr int kLockTimeoutMs = 1000;
    const QString path = options.path().installationPath(roots);
    QDir().mkpath(QFileInfo(path).absolutePath());
    QLockFile lock(path + QStringLiteral(".lock"));
    lock.tryLock(kLockTimeoutMs);
    try {
        options.loadIfChanged(roots);
    } catch (const Error &) {
        // A damaged or newer file was reported at start, and store() does not overwrite it.
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
