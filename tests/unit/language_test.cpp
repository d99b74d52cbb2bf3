#include <doctest.h>

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include "language/Language.h"
#include "platform/Module.h"
#include "support/Files.h"
#include "support/Prompt.h"

namespace {

struct Recorder : Prompt::Port {
    Recorder() : earlier(Prompt::Plug(this)) {}
    ~Recorder() override { Prompt::Plug(earlier); }
    std::int32_t Ask(std::int32_t, std::string& prompt, std::int32_t, const std::string&) override {
        asked.push_back(prompt);
        return 1;
    }
    std::string Input(const std::string&, const std::string&, const std::string&, bool&) override { return {}; }
    std::int32_t Message(std::int32_t, std::int32_t, std::int32_t, const std::string&, const std::string&,
                         const std::string&, const std::string&, std::int32_t) override {
        return 0;
    }
    Prompt::Port* earlier;
    std::vector<std::string> asked;
};

// The English file beside the test program, while it lives.
struct LanguageFile {
    explicit LanguageFile(std::string_view text) {
        std::FILE* file = std::fopen(path.c_str(), "wb");
        REQUIRE(file);
        std::fwrite(text.data(), 1, text.size(), file);
        std::fclose(file);
        Language::LangInit();
    }
    ~LanguageFile() { std::remove(path.c_str()); }
    std::string path = Files::AppFolder() + "English.lng";
};

}  // namespace

TEST_CASE("a text is found by section and key, with its escapes read") {
    const LanguageFile file(
        "x\r\n[Messages]\r\nDebug2=Line 1\\nLine 2\\tend\r\n[OutlookAddIn]\r\nmSync=S&ynchronize\r\n");
    CHECK(Language::GetLanguageString("OutlookAddIn", "mSync") == "S&ynchronize");
    CHECK(Language::GetLanguageString("Messages", "Debug2") == "Line 1\rLine 2\tend");
    CHECK(Language::GetLanguageString("Messages", "mSync").empty());
}
TEST_CASE("every occurrence of a placeholder is replaced") {
    const LanguageFile file("[OutlookAddIn]\r\nMsg1=%i and %i?\r\n");
    CHECK(Language::GetLanguageStringReplaced("OutlookAddIn", "Msg1", "%i", "tasks") == "tasks and tasks?");
}
TEST_CASE("a missing key is the empty text, and told only where the caller wants it") {
    Recorder recorder;
    const LanguageFile file("[Messages]\r\nDebug2=x\r\n");
    CHECK(Language::GetLanguageString("Messages", "Debug9").empty());
    CHECK(recorder.asked.empty());
    CHECK(Language::GetLanguageString("Messages", "Debug9", true).empty());
    REQUIRE(recorder.asked.size() == 1);
    CHECK(recorder.asked[0] == "Missing 'Debug9' in Messages in the language file!");
}
TEST_CASE("without a language file no missing key is told") {
    Recorder recorder;
    { const LanguageFile removedAgain(""); }
    Language::LangInit();
    CHECK(Language::GetLanguageString("Messages", "Debug9", true).empty());
    CHECK(recorder.asked.empty());
}
