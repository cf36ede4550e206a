#include "AliasTables.h"

#include "Messages.h"

namespace db {

QList<const AliasSpec *> requestAliasTables(ConversionPass &pass)
{
    QList<const AliasSpec *> approved;
    for (const AliasSpec &spec : aliasSpecs()) {
        const QString name = QString::fromUtf16(spec.table);
        if (!pass.database().hasTable(name) && pass.request(messages::kStepAlias, name))
            approved.append(&spec);
    }
    return approved;
}

void createAliasTables(ConversionPass &pass, const QList<const AliasSpec *> &requested)
{
    for (const AliasSpec *spec : requested) {
        const QString name = QString::fromUtf16(spec->table);
        bool isThere = pass.database().hasTable(name);
        const auto create = [&] {
            if (!isThere)
                isThere = createAliasTable(pass.prompts(), pass.database(), *spec);
        };
        pass.guarded([&] { pass.change(create); }, messages::kCreateAlias, name);
        if (!isThere)
            pass.markFailed(messages::kStepAlias, name);
    }
}

} // namespace db
