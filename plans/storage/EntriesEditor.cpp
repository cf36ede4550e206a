#include "EntriesEditor.h"

#include "Messages.h"

namespace plans {

bool EntriesEditor::numberOf(const QString &label, ellery::Axis axis, int &number) const
{
    number = component().stringToNumber(axis, label);
    if (number < 0)
        prompts().error(messages::kNotALabel, label.trimmed(), component().axisNames[int(axis)]);
    return number >= 0;
}

void EntriesEditor::setOrigin(bool isFromFile, const QString &file)
{
    m_isFromFile = isFromFile;
    m_file = file;
    m_isModified = false;
}

} // namespace plans
