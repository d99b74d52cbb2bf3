// The add-in's modules and a stand-in for the main application, a process of its own, work on the same settings file and
// the same list at the same time: rounds by a seed, few in `make test`, many with CV_WHOLE=1.
#include <doctest.h>
#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "bridge/CVOutlAddIn.h"
#include "bridge/FormOlAddInTimer.h"
#include "config/IniFile.h"
#include "platform/Err.h"
#include "platform/WholeFile.h"
#include "testing/ChildProcess.h"
#include "testing/PrivateRegistry.h"
#include "testing/TempFolder.h"
#include "testing/Versions.h"

namespace {

const std::string outlookKey = "Software\\Quillmark\\Corvella\\Outlook";

std::int64_t Now() {
    LARGE_INTEGER now;
    QueryPerformanceCounter(&now);
    return now.QuadPart;
}

struct Span {
    std::int64_t begin = 0;
    std::int64_t end = 0;
};

bool Overlap(const Span& one, const Span& other) { return one.begin <= other.end && other.begin <= one.end; }
bool Within(std::int64_t when, const Span& span) { return span.begin <= when && when <= span.end; }

template <class Spans, class Fits>
bool Any(const Spans& spans, Fits fits) {
    return std::any_of(spans.begin(), spans.end(), fits);
}

// From before the file is last compared until it has been replaced.
std::int64_t comparing = 0;
std::vector<Span> replacements;
std::uint32_t NoteStep(const char* step) {
    if (std::string(step) == "replace") comparing = Now();
    return 0;
}

// What the other process did.
struct Record {
    struct Taking {
        Span span;
        std::vector<std::string> ids;
    };
    std::map<int, Span> saved;
    std::vector<Taking> takings;

    explicit Record(const std::string& text) {
        std::istringstream lines(text);
        for (std::string word; lines >> word;) {
            if (word == "saved") {
                int number = 0;
                Span span;
                lines >> number >> span.begin >> span.end;
                saved[number] = span;
            } else {
                Taking taking;
                std::string ids;
                lines >> taking.span.begin >> taking.span.end >> ids;
                std::istringstream list(ids);
                for (std::string id; std::getline(list, id, ';');) taking.ids.push_back(id);
                takings.push_back(taking);
            }
        }
    }
};

class MainApplication {
  public:
    MainApplication(const TempFolder& folder, unsigned seed) : folder_(folder), process_(CommandLine(folder, seed)) {}

    // It has done something already: both are at work.
    void WaitUntilAtWork() const {
        for (int look = 0; look < 6000; ++look) {
            if (folder_.Read("corvella.ini").find("m0=") != std::string::npos) return;
            Sleep(10);
        }
        FAIL("the other process does nothing");
    }
    [[nodiscard]] Record End() const {
        folder_.Write("record.stop", "");
        CHECK(process_.End(90000) == 0);
        return Record(folder_.Read("record"));
    }

  private:
    static std::string CommandLine(const TempFolder& folder, unsigned seed) {
        const std::string key =
            "Software\\Corvella Tests\\" + std::to_string(GetCurrentProcessId()) + "\\User\\" + outlookKey;
        return "\"" + own_program::Folder() + "main_application.exe\" \"" + folder.Path("corvella.ini") + "\" \"" +
               key + "\" \"" + folder.Path("record") + "\" " + std::to_string(seed);
    }

    const TempFolder& folder_;
    ChildProcess process_;
};

struct Counts {
    int settings = 0, entries = 0, saved = 0, takings = 0;
    int savedOver = 0, lost = 0, cameBack = 0;
};

class Play {
  public:
    explicit Play(unsigned seed) : seed_(seed) {
        folder_.Write("corvella.ini", "[Main]\r\nfirst=1\r\n[Fill]\r\nf=" + std::string(2700, 'x') + "\r\n");
        IniFile::location = {folder_.Path("corvella.ini"), folder_.Path("corvella.ini"), 0};
        IniFile::IniInit(false);
        replacements.clear();
        platform::WatchFiles(NoteStep);
    }
    ~Play() {
        platform::WatchFiles(nullptr);
        FormOlAddInTimer::Unload();
        IniFile::location = {};
        IniFile::IniInit(false);
    }
    Play(const Play&) = delete;
    Play& operator=(const Play&) = delete;

    void Run(int rounds, Counts& counts) {
        std::mt19937 chance(seed_);
        {
            const MainApplication other(folder_, seed_ + 1);
            other.WaitUntilAtWork();
            for (int round = 0; round < rounds; ++round) {
                if (chance() % 2 == 0) {
                    WriteSetting();
                } else {
                    AddEntry();
                }
                if (chance() % 4 == 0) Sleep(chance() % 3);
            }
            const Record record = other.End();
            IniFile::IniInit(false);
            CheckSettings(record, counts);
            CheckList(record, counts);
        }
    }

  private:
    void WriteSetting() {
        const std::string number = std::to_string(written_++);
        comparing = 0;
        IniFile::SetIniSetting("OutlookAddIn", "a" + number, "value " + number, true);
        if (comparing != 0) replacements.push_back({comparing, Now()});
    }

    void AddEntry() {
        const std::string id = "ID" + std::to_string(100000 + adds_.size());
        const std::int64_t begin = Now();
        CVOutlAddIn::AddChangedItem(id, 'C', true, false);
        adds_[id] = {begin, Now()};
    }

    void CheckSettings(const Record& record, Counts& counts) const {
        const std::string text = folder_.Read("corvella.ini");
        const auto holds = [&](const std::string& line) {
            return text.find("\r\n" + line + "\r\n") != std::string::npos;
        };
        for (int number = 0; number < written_; ++number) {
            const std::string line = "a" + std::to_string(number) + "=value " + std::to_string(number);
            CAPTURE(line);
            CHECK(holds(line));
        }
        for (const auto& [number, span] : record.saved) {
            const std::string line = "m" + std::to_string(number) + "=" + std::to_string(number * 7);
            if (holds(line)) continue;
            // Saved between our last comparison and the replacement: Windows has no call that does both at once.
            const std::int64_t end = span.end;
            CAPTURE(line);
            CHECK(Any(replacements, [&](const Span& ours) { return Within(end, ours); }));
            ++counts.savedOver;
        }
        CHECK(holds("f=" + std::string(2700, 'x')));
        counts.settings += written_;
        counts.saved += static_cast<int>(record.saved.size());
    }

    void CheckList(const Record& record, Counts& counts) const {
        const std::string list =
            ";" + std::string(PrivateRegistry::Raw(HKEY_CURRENT_USER, outlookKey, "ChangedC").bytes.c_str()) + ";";
        for (const auto& add : adds_) {
            const std::string& id = add.first;
            CAPTURE(id);
            const std::string marked = ";" + id + ";";
            const std::size_t at = list.find(marked);
            int seen = at == std::string::npos ? 0 : 1;
            if (seen == 1) CHECK(list.find(marked, at + 1) == std::string::npos);
            std::vector<Span> takings;
            for (const Record::Taking& taking : record.takings) {
                if (std::find(taking.ids.begin(), taking.ids.end(), id) == taking.ids.end()) continue;
                ++seen;
                takings.push_back(taking.span);
            }
            // The other one read the list before this entry was in it, and wrote it afterwards.
            if (seen == 0) {
                CHECK(Any(record.takings, [&](const auto& taking) { return Overlap(taking.span, add.second); }));
                ++counts.lost;
            }
            // We read the list before the other one took this entry out, and wrote it afterwards.
            if (seen > 1) {
                const auto whileAdding = [&](const Span& taking) {
                    return Any(adds_, [&](const auto& other) { return Overlap(taking, other.second); });
                };
                CHECK(std::count_if(takings.begin(), takings.end(), whileAdding) >= seen - 1);
                counts.cameBack += seen - 1;
            }
        }
        counts.entries += static_cast<int>(adds_.size());
        counts.takings += static_cast<int>(record.takings.size());
    }

    unsigned seed_;
    TempFolder folder_;
    PrivateRegistry registry_;
    std::map<std::string, Span> adds_;
    int written_ = 0;
};

}  // namespace

TEST_CASE("beside the main application at work no setting is lost, and no entry but in the race for the list") {
    const bool whole = versions::Whole();
    std::vector<unsigned> seeds{2003};
    for (int more = whole ? 10 : 1; more > 0; --more) seeds.push_back(std::random_device()());
    Counts counts;
    std::string played;
    for (const unsigned seed : seeds) {
        CAPTURE(seed);
        Play(seed).Run(whole ? 500 : 150, counts);
        played += " " + std::to_string(seed);
    }
    MESSAGE("seeds", played, ": ", counts.settings, " settings written beside ", counts.saved, " saved, of which ",
            counts.savedOver, " were saved in the moment of a replacement and lost; ", counts.entries,
            " entries beside ", counts.takings, " takings, of which ", counts.lost, " were lost and ", counts.cameBack,
            " came back in the race for the list");
    CHECK(counts.saved > 0);
    CHECK(counts.takings > 0);
}
