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
    /// kCount colours, 0x00BBGGRR; white if not defined.
    QList<quint32> colours;

protected:
    void serializeBody(tarnwick::JFile &file, int version) override;
    void resetToDefaults() override;
};

} // namespace brannock
