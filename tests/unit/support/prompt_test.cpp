#include <doctest.h>
#include <windows.h>

#include "support/Prompt.h"
#include "testing/BoxAnswerer.h"

namespace {

class RecordingPort : public Prompt::Port {
  public:
    std::int32_t Ask(std::int32_t questionId, std::string& prompt, std::int32_t buttons,
                     const std::string& title) override {
        seen = std::to_string(questionId) + "/" + prompt + "/" + std::to_string(buttons) + "/" + title;
        prompt = "first field";
        return 9;
    }
    std::string Input(const std::string& prompt, const std::string& title, const std::string& defaultText,
                      bool& cancelled) override {
        seen = prompt + "/" + title + "/" + defaultText;
        cancelled = false;
        return "typed";
    }
    std::int32_t Message(std::int32_t questionId, std::int32_t number, std::int32_t buttons, const std::string& search1,
                         const std::string& replace1, const std::string& search2, const std::string& replace2,
                         std::int32_t askLimit) override {
        seen = std::to_string(questionId) + "/" + std::to_string(number) + "/" + std::to_string(buttons) + "/" +
               search1 + replace1 + search2 + replace2 + "/" + std::to_string(askLimit);
        return 4;
    }
    std::string seen;
};

}  // namespace

TEST_CASE("without a port a question is the standard message box") {
    const BoxAnswerer user(IDCANCEL);
    std::string prompt = "Go on?|Yes|No";
    CHECK(Prompt::Ask(-1, prompt, MB_OKCANCEL, "Title") == IDCANCEL);
    REQUIRE(user.Seen().size() == 1);
    CHECK(user.Seen()[0].title == "Title");
    CHECK(user.Seen()[0].text == "Go on?");
    CHECK(prompt == "Go on?");
}

TEST_CASE("without a port an input is cancelled and returns its default text") {
    bool cancelled = false;
    CHECK(Prompt::Input("Name", "Title", "default", cancelled) == "default");
    CHECK(cancelled);
}

TEST_CASE("without a port a message is not shown and returns 0") {
    const BoxAnswerer user(IDOK);
    CHECK(Prompt::Message(-1, 232, 0) == 0);
    CHECK(user.Seen().empty());
}

TEST_CASE("the port that is plugged in gets every argument and gives the answer") {
    RecordingPort port;
    CHECK(Prompt::Plug(&port) == nullptr);
    std::string prompt = "a|b";
    CHECK(Prompt::Ask(-1, prompt, 4, "t") == 9);
    CHECK(port.seen == "-1/a|b/4/t");
    CHECK(prompt == "first field");
    bool cancelled = true;
    CHECK(Prompt::Input("p", "t", "d", cancelled) == "typed");
    CHECK(port.seen == "p/t/d");
    CHECK_FALSE(cancelled);
    CHECK(Prompt::Message(7, 232, 48, "%f", "x", "%e", "y", 2) == 4);
    CHECK(port.seen == "7/232/48/%fx%ey/2");
    CHECK(Prompt::Plug(nullptr) == &port);
}
