#include "FileExport.h"
#include "MdbPages.h"

#include <jet/confine/Confinement.h>
#include <jet/confine/Limits.h>

#include <cstdio>
#include <cstring>
#include <new>
#include <QFile>
#include <QFileInfo>

namespace {

using jet::wire::ErrorCode;

constexpr int kFailed = 1;
constexpr int kUsage = 2;

int fail(jet::reader::FrameWriter &out, ErrorCode code, jet::wire::Fault fault = jet::wire::Fault::None,
         quint32 page = 0)
{
    out.send(jet::wire::Frame::Error, jet::wire::Note{quint16(code), {}, {}, 0, 0, fault, page});
    return kFailed;
}

int exportFile(const QString &path, bool schemaOnly)
{
    jet::reader::FrameWriter out;
    try {
        jet::reader::MdbPages source(path);
        jet::format::Pages pages(source);
        jet::reader::FileExport(pages, out).run(schemaOnly);
    } catch (const jet::reader::OpenFailure &failure) {
        return fail(out, failure.code());
    } catch (const jet::format::Damage &damage) {
        const bool beyond = damage.fault() == jet::wire::Fault::PageBeyondEnd;
        return fail(out, beyond ? ErrorCode::CutShort : ErrorCode::CatalogDamaged, damage.fault(), damage.page());
    } catch (const std::bad_alloc &) {
        return fail(out, ErrorCode::OutOfMemory);
    }
    return 0;
}

} // namespace

/// arvo-jet-reader [--schema] FILE: writes the content of a Jet 3 or Jet 4 file to standard output, in the frames of
/// jet/wire/Protocol.h. Started by jet::JetReader; not intended for users.
int main(int argc, char **argv)
{
    const bool schemaOnly = argc == 3 && std::strcmp(argv[1], "--schema") == 0;
    if (argc != 2 && !schemaOnly) {
        std::fputs("usage: arvo-jet-reader [--schema] FILE\n", stderr);
        return kUsage;
    }
    const QString path = QFile::decodeName(argv[argc - 1]);
    jet::confine::setLimits(QFileInfo(path).size());
    if (!jet::confine::confine())
        return jet::wire::kNotConfined;
    return exportFile(path, schemaOnly);
}
