#include "check/Mending.h"

#include "check/UndoText.h"
#include "platform/Environment.h"
#include "platform/Text.h"
#include "support/Product.h"

namespace Check {
namespace {

Done Before(const Change& change) {
    const platform::LookedAtKey key(change.root, change.key, change.view);
    return {change, key.Value(change.name), key.IsThere()};
}

bool Make(const Change& change) {
    const std::int32_t status = change.removes ? platform::DropValue(change.root, change.key, change.view, change.name)
                                               : platform::StoreValue(change.root, change.key, change.view, change.name,
                                                                      change.type, change.bytes);
    return status == platform::RegistryDone || (change.removes && status == platform::RegistryNotFound);
}

std::string FolderForUndo(const Snapshot& snapshot) {
    if (!snapshot.settings.appData.empty()) {
        std::string folder = platform::WithBackslash(snapshot.settings.appData) + Product::Folder;
        if (platform::MakeReportFolder(folder)) return folder;
    }
    return platform::WithBackslash(platform::EnvironmentVariable("TEMP"));
}

}  // namespace

// "CorvellaCheck 2026-11-22 0330.reg"
std::string UndoFileFor(const Snapshot& snapshot) {
    const std::string begin = FolderForUndo(snapshot) + "CorvellaCheck " + platform::Replace(snapshot.now, ":", "");
    std::string file = begin + ".reg";
    for (std::int32_t i = 2; platform::LookAtFile(file).found != Found::Missing; ++i)
        file = begin + " " + platform::Decimal(i) + ".reg";
    return file;
}

Mended Mend(const std::vector<Change>& changes, const std::string& undoFile) {
    Mended mended;
    std::vector<Done> done;
    for (const Change& change : changes) {
        Done one = Before(change);
        const bool readable =
            one.keyBefore != Found::Unreadable && one.before.found != Found::Unreadable && !one.before.tooLong;
        if (readable) done.push_back(std::move(one));
    }
    mended.undoWritten = platform::WriteReportFile(undoFile, UndoText(done, platform::HasRegistryViews()));
    if (!mended.undoWritten) return mended;
    mended.all = done.size() == changes.size();
    for (const Done& one : done) mended.all = Make(one.change) && mended.all;
    return mended;
}

}  // namespace Check
