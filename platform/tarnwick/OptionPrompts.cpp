#include "OptionPrompts.h"

namespace tarnwick {

void loadOptions(OptionFile &options, const PathRoots &roots, UserPrompts &prompts)
{
    try {
        options.load(roots);
    } catch (const Error &error) {
        prompts.error(messages::kOptionsUnreadable, error.text());
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
