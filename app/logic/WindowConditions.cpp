#include "WindowConditions.h"

using namespace Qt::StringLiterals;

namespace app {

QString whyNot(int condition, const CommandContext &context)
{
    if (condition == When::Later)
        return u"Comes with a later version."_s;
    if (condition != When::Always && !context.hasProject)
        return u"Open a project first."_s;
    const auto unless = [](bool holds, const QString &reason) { return holds ? QString() : reason; };
    const QString noTube = u"There is no tube under the pointer."_s;
    const QString noSections = u"The component has no sections."_s;
    switch (condition) {
    case When::Sections:
        return unless(context.hasSections, noSections);
    case When::Entries:
        return unless(context.hasEntries, u"The legend has no entries."_s);
    case When::CanUndo:
        return unless(context.canUndo, u"There is no change to undo."_s);
    case When::CanRedo:
        return unless(context.canRedo, u"There is no change to redo."_s);
    case When::PointedTube:
        return unless(context.hasPointedTube, noTube);
    case When::PointedSymbol:
        return unless(context.pointedTubeHasSymbol, u"There is no tube with a symbol under the pointer."_s);
    case When::PointedSection:
        return context.hasSections ? unless(context.hasPointedTube, noTube) : noSections;
    case When::ViewBefore:
        return unless(context.hasPreviousView, u"There is no earlier view."_s);
    case When::ViewAfter:
        return unless(context.hasNextView, u"There is no later view."_s);
    default:
        return {};
    }
}

} // namespace app
