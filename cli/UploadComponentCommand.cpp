#include "CommandLine.h"
#include "CommandTable.h"
#include "Target.h"

#include <db/revision/ComponentUpload.h>

namespace cli {

using namespace Qt::StringLiterals;

int runUploadComponent(const Arguments &arguments)
{
    arguments.atMost(1);
    Target target(arguments.positional(0, u"DIR"_s), arguments, Target::Takes::Project);
    if (!target.connect(Target::Use::Store))
        return Failed;
    ConsoleProgress progress;
    if (!db::uploadComponent(target.session(), target.map().component(), &progress))
        return Failed;
    qint64 landmarks = 0;
    for (const ellery::LandmarkSet &set : std::as_const(target.map().component().landmarkSets))
        landmarks += set.landmarks.size();
    print(u"%1 %2 tubes, %3 landmarks.\n"_s.arg(target.console().lastStatus())
              .arg(target.map().component().numTube())
              .arg(landmarks));
    return Done;
}

} // namespace cli
