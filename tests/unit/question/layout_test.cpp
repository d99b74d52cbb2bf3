// Where everything stands on the question box; pure.
#include <doctest.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>

#include "question/QuestionLayout.h"

using namespace QuestionLayout;

namespace {

// Letters of one width, broken where a line is full.
class PlainMeasure final : public TextMeasure {
  public:
    explicit PlainMeasure(std::int32_t dotsAnInch) : letter_(6 * dotsAnInch / 96), line_(13 * dotsAnInch / 96) {}
    [[nodiscard]] Size Of(Part part, std::int32_t width) const override {
        const auto found = texts.find(part);
        const std::string text = found == texts.end() ? std::string() : found->second;
        const std::int32_t perLine = width > 0 ? std::max(1, width / letter_) : 1 << 20;
        std::int32_t lines = 0, widest = 0;
        for (std::size_t start = 0; start <= text.size();) {
            const std::size_t end = std::min(text.find('\r', start), text.size());
            const auto length = static_cast<std::int32_t>(end - start);
            lines += std::max(1, (length + perLine - 1) / perLine);
            widest = std::max(widest, std::min(length, perLine));
            start = end + 1;
        }
        return {widest * letter_, lines * line_};
    }
    [[nodiscard]] std::int32_t Line() const { return line_; }

    std::map<Part, std::string> texts;

  private:
    std::int32_t letter_, line_;
};

std::string Words(std::size_t length) {
    std::string text;
    while (text.size() < length) text += "Erinnerung ";
    text.resize(length);
    return text;
}

Request RequestFor(std::int32_t dotsAnInch, Size screen, const PlainMeasure& measure) {
    Request request;
    request.dotsAnInch = dotsAnInch;
    request.largest = screen;
    request.border = Pixels(-15, dotsAnInch);
    request.captionHeight = Pixels(-300, dotsAnInch);
    request.scrollBar = Pixels(-240, dotsAnInch);
    request.sides = Pixels(-350, dotsAnInch);
    request.lineHeight = measure.Line();
    request.buttons = {Part::First};
    return request;
}

bool Overlap(const Rect& a, const Rect& b) {
    return a.left < b.Right() && b.left < a.Right() && a.top < b.Bottom() && b.top < a.Bottom();
}

// Everything that is shown, each with a size, wholly inside, and none over another.
void CheckWhole(const Request& request, const Layout& layout) {
    std::vector<Rect> parts = layout.buttons;
    parts.insert(parts.end(), {layout.captionBar, layout.prompt, layout.grip});
    if (request.picture) parts.push_back(layout.picture);
    if (request.link) parts.push_back(layout.link);
    if (request.check) parts.push_back(layout.check);
    if (request.input != Input::None) parts.push_back(layout.input);
    CHECK(layout.inside.width <= request.largest.width);
    CHECK(layout.inside.height <= request.largest.height);
    CHECK(layout.buttons.size() == request.buttons.size());
    for (std::size_t i = 0; i < parts.size(); ++i) {
        CAPTURE(i);
        CHECK(parts[i].width > 0);
        CHECK(parts[i].height > 0);
        CHECK(parts[i].left >= 0);
        CHECK(parts[i].top >= 0);
        CHECK(parts[i].Right() <= layout.inside.width);
        CHECK(parts[i].Bottom() <= layout.inside.height);
        for (std::size_t other = 0; other < i; ++other) {
            CAPTURE(other);
            CHECK_FALSE(Overlap(parts[i], parts[other]));
        }
    }
}

// No text is larger than where it stands.
void CheckTexts(const Request& request, const PlainMeasure& measure, const Layout& layout) {
    CHECK_FALSE(layout.captionsCut);
    const auto holds = [&](const Rect& area, Part part) {
        CAPTURE(static_cast<int>(part));
        CHECK(measure.Of(part, area.width).width <= area.width);
        CHECK(measure.Of(part, area.width).height <= area.height);
    };
    if (!layout.promptScrolls) holds(layout.prompt, Part::Prompt);
    if (request.link) holds(layout.link, Part::Link);
    if (request.check) holds(layout.check, Part::Check);
    holds(layout.caption, Part::Caption);
    for (std::size_t i = 0; i < layout.buttons.size(); ++i) holds(layout.buttons[i], request.buttons[i]);
}

constexpr std::int32_t resolutions[] = {96, 120, 144, 192};

}  // namespace

TEST_CASE("metrics in twips grow with the resolution, those in pixels do not") {
    CHECK(Pixels(-300, 96) == 20);
    CHECK(Pixels(-300, 192) == 40);
    CHECK(Pixels(-15, 96) == 1);
    CHECK(Pixels(-240, 120) == 20);
    CHECK(Pixels(18, 192) == 18);
    CHECK(Pixels(0, 96) == 0);
}

TEST_CASE("a form with one word is small, its button in the middle") {
    PlainMeasure measure(96);
    measure.texts = {{Part::Prompt, "Done"}, {Part::First, "OK"}, {Part::Caption, "Corvella"}};
    const Request request = RequestFor(96, {800, 600}, measure);
    const Layout layout = Arrange(request, measure);
    CheckWhole(request, layout);
    CheckTexts(request, measure, layout);
    CHECK(layout.inside.width <= 260);
    CHECK(layout.inside.height <= 120);
    const Rect& button = layout.buttons[0];
    CHECK(std::abs(button.left + button.width / 2 - layout.inside.width / 2) <= 1);
}

TEST_CASE("buttons in one row are of one size") {
    PlainMeasure measure(96);
    measure.texts = {{Part::Prompt, "Go?"}, {Part::First, "Yes"}, {Part::No, "No"}, {Part::Cancel, "Do not go there"}};
    Request request = RequestFor(96, {800, 600}, measure);
    request.buttons = {Part::First, Part::No, Part::Cancel};
    const Layout layout = Arrange(request, measure);
    CheckWhole(request, layout);
    CHECK(layout.buttons[0].width == layout.buttons[2].width);
    CHECK(layout.buttons[0].top == layout.buttons[2].top);
}

TEST_CASE("a short caption does not get a very wide button for a long one beside it") {
    PlainMeasure measure(96);
    measure.texts = {{Part::Prompt, "Go?"}, {Part::First, std::string(40, 'x')}, {Part::Cancel, "No"}};
    Request request = RequestFor(96, {800, 600}, measure);
    request.buttons = {Part::First, Part::Cancel};
    const Layout layout = Arrange(request, measure);
    CheckWhole(request, layout);
    CheckTexts(request, measure, layout);
    CHECK(layout.buttons[0].top == layout.buttons[1].top);
    CHECK(layout.buttons[1].width == 75);
}

TEST_CASE("buttons in several rows are of one size where that takes no further row") {
    PlainMeasure measure(96);
    measure.texts = {{Part::Prompt, "Go?"},
                     {Part::First, std::string(50, 'x')},
                     {Part::No, std::string(45, 'x')},
                     {Part::Cancel, std::string(55, 'x')},
                     {Part::All, std::string(40, 'x')}};
    Request request = RequestFor(96, {800, 600}, measure);
    request.buttons = {Part::First, Part::No, Part::Cancel, Part::All};
    const Layout two = Arrange(request, measure);
    CheckWhole(request, two);
    for (const Rect& button : two.buttons) CHECK(button.width == two.buttons[2].width);
    CHECK(two.buttons[1].top == two.buttons[0].top);
    CHECK(two.buttons[2].top > two.buttons[0].top);
    CHECK(two.buttons[3].top == two.buttons[2].top);
    measure.texts[Part::All] = "x";
    measure.texts[Part::First] = std::string(110, 'x');
    const Layout three = Arrange(request, measure);
    CheckWhole(request, three);
    CHECK(three.buttons[3].width < three.buttons[0].width);
    CHECK(three.buttons[3].top == three.buttons[2].top);
}

TEST_CASE("buttons that would stand in ragged rows stand below each other, of one size") {
    PlainMeasure measure(192);
    measure.texts = {{Part::Prompt, "Go?"},
                     {Part::First, std::string(30, 'x')},
                     {Part::No, std::string(36, 'x')},
                     {Part::Cancel, "x"},
                     {Part::All, std::string(30, 'x')}};
    Request request = RequestFor(192, {800, 600}, measure);
    request.buttons = {Part::First, Part::No, Part::Cancel, Part::All};
    const Layout layout = Arrange(request, measure);
    CheckWhole(request, layout);
    for (std::size_t i = 1; i < layout.buttons.size(); ++i) {
        CHECK(layout.buttons[i].left == layout.buttons[0].left);
        CHECK(layout.buttons[i].width == layout.buttons[0].width);
        CHECK(layout.buttons[i].top > layout.buttons[i - 1].top);
    }
}

TEST_CASE("a very long prompt makes the form wider only until it leaves half of the screen's height") {
    PlainMeasure measure(96);
    measure.texts = {{Part::Prompt, Words(3000)}, {Part::First, "OK"}};
    const Request request = RequestFor(96, {1280, 1024}, measure);
    const Layout layout = Arrange(request, measure);
    CheckTexts(request, measure, layout);
    CHECK(layout.prompt.height <= 512);
    CHECK(layout.prompt.height > 256);
    CHECK(layout.inside.width < 640);
    measure.texts[Part::Prompt] = Words(20000);
    CHECK(Arrange(request, measure).inside.width == 1280);
}

TEST_CASE("a field is as high as its line, the edges of fields not growing with the resolution") {
    for (const std::int32_t dots : resolutions) {
        PlainMeasure measure(dots);
        measure.texts = {{Part::Prompt, "Name:"}, {Part::First, "OK"}};
        Request request = RequestFor(dots, {1024, 768}, measure);
        request.input = Input::Line;
        CHECK(Arrange(request, measure).input.height == measure.Line() + 8);
    }
}

TEST_CASE("everything shown is wholly shown at every resolution, whatever is asked for") {
    const std::string captions[][4] = {
        {"OK", "No", "Cancel", "All"},
        {"Synchronisierung jetzt starten", "Synchronisierung nicht starten", "Abbrechen und sp\xE4ter erinnern",
         "F\xFCr alle \xFC"
         "brigen Eintr\xE4ge \xFC"
         "bernehmen"}};
    const std::string links[] = {
        "", "http://www.corvella.example/support/outlook/synchronisation/index.html?lang=de&version=2"};
    for (const Size screen : {Size{800, 600}, Size{800, 560}, Size{1024, 768}, Size{1280, 1024}}) {
        for (const std::int32_t dots : resolutions) {
            for (const std::size_t length : {4u, 60u, 300u, 900u, 2000u}) {
                for (const auto& four : captions) {
                    for (const std::string& link : links) {
                        for (unsigned bits = 0; bits < 24; ++bits) {
                            PlainMeasure measure(dots);
                            measure.texts = {{Part::Prompt, Words(length)},
                                             {Part::Link, link},
                                             {Part::Caption, "Corvella Outlook AddIn"},
                                             {Part::Check,
                                              "Diese Meldung beim n\xE4"
                                              "chsten Mal wieder anzeigen"},
                                             {Part::First, four[0]},
                                             {Part::No, four[1]},
                                             {Part::Cancel, four[2]},
                                             {Part::All, four[3]},
                                             {Part::Help, "Hilfe"}};
                            Request request = RequestFor(dots, screen, measure);
                            request.link = !link.empty();
                            request.picture = (bits & 1) != 0;
                            request.check = (bits & 2) != 0;
                            request.input = static_cast<Input>(bits / 4 % 3);
                            request.buttons = bits >= 12 ? std::vector{Part::First, Part::No, Part::Cancel, Part::All}
                                                         : std::vector{Part::First};
                            // A list beside four long captions does not go on the smallest screens.
                            const bool crowded = request.input == Input::List && bits >= 12 && dots > 144;
                            if (crowded && screen.height < 768) continue;
                            CAPTURE(screen.width);
                            CAPTURE(dots);
                            CAPTURE(length);
                            CAPTURE(bits);
                            CAPTURE(four[0]);
                            const Layout layout = Arrange(request, measure);
                            CheckWhole(request, layout);
                            CheckTexts(request, measure, layout);
                        }
                    }
                }
            }
        }
    }
}

TEST_CASE("a prompt that is too long for the screen scrolls, a shorter one does not") {
    PlainMeasure measure(192);
    measure.texts = {{Part::Prompt, Words(2000)}, {Part::First, "OK"}};
    const Request request = RequestFor(192, {800, 600}, measure);
    CHECK(Arrange(request, measure).promptScrolls);
    measure.texts[Part::Prompt] = Words(200);
    CHECK_FALSE(Arrange(request, measure).promptScrolls);
}

TEST_CASE("a chosen size is kept within what the parts need and the screen has") {
    PlainMeasure measure(96);
    measure.texts = {{Part::Prompt, Words(400)}, {Part::First, "OK"}, {Part::Cancel, "Cancel"}};
    Request request = RequestFor(96, {800, 600}, measure);
    request.buttons = {Part::First, Part::Cancel};
    for (const Size wanted : {Size{500, 300}, Size{1, 1}, Size{5000, 5000}, Size{300, 120}}) {
        request.wanted = wanted;
        const Layout layout = Arrange(request, measure);
        CAPTURE(wanted.width);
        CheckWhole(request, layout);
        CheckTexts(request, measure, layout);
    }
    request.wanted = {500, 300};
    CHECK(Arrange(request, measure).inside == Size{500, 300});
}

TEST_CASE("captions beyond all measure are cut off before the prompt is") {
    PlainMeasure measure(192);
    measure.texts = {{Part::Prompt, Words(2000)}, {Part::First, Words(3000)},  {Part::No, Words(3000)},
                     {Part::Cancel, Words(3000)}, {Part::All, Words(3000)},    {Part::Check, Words(3000)},
                     {Part::Link, Words(3000)},   {Part::Caption, Words(3000)}};
    Request request = RequestFor(192, {800, 600}, measure);
    request.buttons = {Part::First, Part::No, Part::Cancel, Part::All};
    request.link = request.check = true;
    const Layout layout = Arrange(request, measure);
    CheckWhole(request, layout);
    CHECK(layout.captionsCut);
    CHECK(layout.promptScrolls);
}

TEST_CASE("a caller's width for the text is kept where the screen has it") {
    PlainMeasure measure(96);
    measure.texts = {{Part::Prompt, Words(300)}, {Part::First, "OK"}};
    Request request = RequestFor(96, {800, 600}, measure);
    request.textWidth = 240;
    const Layout narrow = Arrange(request, measure);
    CheckTexts(request, measure, narrow);
    CHECK(narrow.prompt.width <= 240);
    request.textWidth = 600;
    CHECK(Arrange(request, measure).prompt.width > 500);
    request.textWidth = 100000;
    CHECK(Arrange(request, measure).inside.width <= 800);
}

TEST_CASE("buttons are of one size where the screen is as wide as that and the form's sides, not a pixel less") {
    PlainMeasure measure(96);
    measure.texts = {{Part::First, std::string(20, 'W')}, {Part::No, "No"}, {Part::Cancel, "Cancel"}};
    Request request = RequestFor(96, {456, 600}, measure);
    request.buttons = {Part::First, Part::No, Part::Cancel};
    const Layout alike = Arrange(request, measure);
    CHECK(alike.inside.width == 456);
    CHECK(alike.buttons[0].width == alike.buttons[1].width);
    request.largest.width = 455;
    const Layout apart = Arrange(request, measure);
    CHECK(apart.inside.width < 400);
    CHECK(apart.buttons[0].width > apart.buttons[1].width);
}
