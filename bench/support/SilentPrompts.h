#pragma once
#include <tarnwick/Prompts.h>

namespace bench {

/// Shows nothing. An error or a question ends the benchmark.
class SilentPrompts : public tarnwick::UserPrompts
{
public:
    void showError(int, int, const QString &text) override { qFatal("%s", qPrintable(text)); }
    void showInformation(const QString &) override {}
    tarnwick::Answer ask(tarnwick::Buttons, const QString &text, int) override { qFatal("%s", qPrintable(text)); }
    void showStatus(const QString &) override {}
};

} // namespace bench
