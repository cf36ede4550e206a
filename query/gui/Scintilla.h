#pragma once
// QScintilla's headers use Qt's short keywords, which this program does not define.
#define signals Q_SIGNALS
#define slots Q_SLOTS
#include <Qsci/qscicommandset.h>
#include <Qsci/qscilexercustom.h>
#include <Qsci/qsciscintilla.h>
#undef slots
#undef signals
