#pragma once
#include "FillInput.h"

#include <tarnwick/Prompts.h>

/// Messages of fills. Numbers are unique in the program.
namespace plans::messages {

using tarnwick::Message;

inline constexpr Message kListTubesMissing{1079,
                                           u"Some of the tubes in the list\ndo not exist in the current component."};
inline constexpr Message kNotEnoughTubes{1089, u"Not enough open tubes to do a full fill!"};
inline constexpr Message kQueryFieldsMissing{
    1090, u"Cannot display in map since this query\nis missing the following fields:\n%S"};
inline constexpr Message kQueryTubesMissing{
    1091, u"Query \"%S\"\nreturned %D record%s\nnot exist in the current component.\n\nChoose \"OK\" to show the valid "
          u"tubes in the map.\n\nChoose \"Cancel\" to see the invalid tubes highlighted\nin the query results."};
inline constexpr Message kQueryAddressFailed{
    0, u"In %D of these records the address could not be calculated; the first is record %D, field '%S': %S"};
inline constexpr Message kQueryNotExecuted{1092, u"Must execute a valid query first!"};

inline constexpr Message kDrawsFromFirst{0, u"The sample is drawn from the first %D tubes only.\n\n\"%S\" has %D tubes "
                                            u"to choose from; its random numbers do not reach further."};

} // namespace plans::messages

namespace plans {

/// A remark of a fill with the text of a message.
template <typename... Args>
FillRemark remark(FillRemark::Kind kind, const tarnwick::Message &message, const Args &...args)
{
    return {kind, message.number, tarnwick::format(QStringView(message.text), args...)};
}

} // namespace plans
