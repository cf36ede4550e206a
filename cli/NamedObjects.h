#pragma once
#include "CommandLine.h"
#include "SqlOutput.h"
#include "Target.h"

namespace cli {

// The commands on named objects of the database that plans and tube sets have in common. Storage: plans::PlanStorage or
// plans::TubeSets.

/// Prints the objects of the database. cells: returns the values of one.
template <typename Storage, typename Cells>
int listNamed(const Arguments &arguments, const QList<OutputColumn> &columns, const Cells &cells)
{
    arguments.atMost(1);
    const auto writer = makeRowWriter(arguments);
    Target target(arguments.positional(0, QStringLiteral("DIR")), arguments, Target::Takes::ProjectOrDatabase);
    if (!target.connect(Target::Use::Read))
        return Failed;
    const auto objects = Storage(target.session()).list();
    if (!objects)
        return Failed;
    writer->begin(columns);
    for (const auto &object : *objects)
        writer->row(cells(object));
    writer->end();
    return Done;
}

/// Deletes an object by its name. Asks only if the command line says how to answer.
template <typename Storage>
int deleteNamed(const Arguments &arguments)
{
    arguments.atMost(2);
    const QString name = arguments.positional(1, QStringLiteral("NAME"));
    Target target(arguments.positional(0, QStringLiteral("DIR")), arguments, Target::Takes::ProjectOrDatabase);
    using Asks = typename Storage::Asks;
    const Asks asks = arguments.has(u"no") || arguments.has(u"answers") ? Asks::First : Asks::Never;
    if (!target.connect() || !Storage(target.session()).remove(name, asks))
        return Failed;
    print(target.console().lastStatus() + u'\n');
    return Done;
}

} // namespace cli
