// tests/e2e/RecordedCorvella.h: what the add-in starts as Corvella.
#pragma once
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "e2e/Session.h"
#include "testing/Recorder.h"
#include "testing/TempFolder.h"

namespace e2e {

// Corvella's place is taken by a program that records its starts.
class RecordedCorvella {
  public:
    RecordedCorvella() : recorder_(folder_, "Corvella.exe") {}

    // The session's registry names the folder.
    void Install() const { WriteValue(productKey, "Path", folder_.Path()); }
    // As they are recorded: minimised and active, then the command line.
    [[nodiscard]] std::string Line(const std::string& argument) const {
        return "2 \"" + folder_.Path("Corvella.exe") + "\" " + argument;
    }
    // The starts since the last question, once there are `count`.
    [[nodiscard]] std::vector<std::string> Starts(std::size_t count) { return Later(recorder_.Starts(known_ + count)); }
    // Those within a time in which another one could come.
    [[nodiscard]] std::vector<std::string> StartsLater() { return Later(recorder_.StartsAfter(400)); }

  private:
    std::vector<std::string> Later(const std::vector<std::string>& all) {
        const std::size_t from = std::exchange(known_, all.size());
        return {all.begin() + static_cast<std::ptrdiff_t>(from), all.end()};
    }

    TempFolder folder_;
    Recorder recorder_;
    std::size_t known_ = 0;
};

}  // namespace e2e
