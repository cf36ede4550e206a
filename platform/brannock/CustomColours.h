#pragma once
#include <QList>
#include <tarnwick/OptionFile.h>

namespace brannock {

/// The colours that the user has defined in colour choosers, kept between runs.
class CustomColours : public tarnwick::OptionFile
{
public:
    static constexpr int kCount = 16;

    CustomColours();
    /// kCount colours; white if not defined.
    QList<tarnwick::ColourRef> colours;

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override;
};

} // namespace brannock
