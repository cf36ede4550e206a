#pragma once
#include "HistoryFilter.h"

#include <tarnwick/OptionFile.h>

namespace results {

/// What the history dialog keeps between runs: the history file and the filter.
class ArvoHistoryOptions : public tarnwick::OptionFile
{
public:
    ArvoHistoryOptions();

    QString historyFile; ///< suite path
    HistoryFilter filter;

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override;
};

} // namespace results
