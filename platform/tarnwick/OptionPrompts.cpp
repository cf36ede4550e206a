#include "OptionPrompts.h"

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

} // namespace tarnwick
