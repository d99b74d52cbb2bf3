// Identifiers, memory, captions, links and access keys of a question; pure.
#include <doctest.h>

#include <limits>

#include "question/QuestionRules.h"

using namespace QuestionRules;

namespace {

constexpr std::int32_t Id(std::uint32_t bits) { return static_cast<std::int32_t>(bits); }
const std::array<std::string, 3> noCaptions{};

std::string Linked(std::string_view prompt) {
    const std::optional<Link> link = FindLink(prompt);
    return link ? std::string(prompt.substr(link->start, link->length)) : "none";
}

std::string RecalledText(const Memory& memory, std::int32_t id, std::int32_t buttons) {
    return Recall(memory, *Decode(id), SetOf(buttons)).value_or("asked");
}

}  // namespace

// --- identifiers

TEST_CASE("the top four bits of an identifier choose its slot and the slot's code") {
    struct Row {
        std::uint32_t id;
        std::int32_t slot;
        std::string_view code;
    };
    for (const Row& row :
         {Row{0x80000010, 2, "2"}, Row{0x90000010, 3, "3"}, Row{0xA0000010, 4, "-1"}, Row{0xB0000010, 5, "5"},
          Row{0xC0000010, 6, "6"}, Row{0xD0000010, 7, "_"}, Row{0x00000010, 0, ""}, Row{0x7FFFFFFF, 0, ""}}) {
        CAPTURE(row.id);
        const std::optional<Identity> identity = Decode(Id(row.id));
        REQUIRE(identity);
        CHECK(identity->slot == row.slot);
        CHECK(identity->code == row.code);
    }
}

TEST_CASE("what is left of an identifier below its slot is the question's bits") {
    CHECK(Decode(Id(0x90000010))->id == 0x10);
    CHECK(Decode(Id(0xDFFFFFFF))->id == 0x0FFFFFFF);
    CHECK(Decode(Id(0x80000000))->id == 0);
    CHECK(Decode(0x7FFFFFFF)->id == 0x7FFFFFFF);
}

TEST_CASE("an identifier of slot 8 or 9 has no place in the memory") {
    CHECK_FALSE(Decode(Id(0xE0000000)));
    CHECK_FALSE(Decode(Id(0xE0000010)));
    CHECK_FALSE(Decode(Id(0xF0000010)));
    CHECK_FALSE(Decode(-6));
}

TEST_CASE("the identifiers from -2 to -5 ask for an input, -1 for nothing but an answer") {
    for (std::int32_t id = -5; id <= -2; ++id) CHECK(Decode(id)->IsInput());
    CHECK_FALSE(Decode(-1)->IsInput());
    CHECK_FALSE(Decode(0)->IsInput());
    CHECK_FALSE(Decode(Id(0x80000001))->IsInput());
}

// --- memory

TEST_CASE("identifier -1 never causes a question to be skipped") {
    Memory memory;
    memory.AnswerYesMask.fill(-1);
    memory.AnswerNoMask.fill(-1);
    for (std::int32_t set = 0; set <= 5; ++set) CHECK(RecalledText(memory, -1, set) == "asked");
    for (std::int32_t id = -5; id <= -2; ++id) CHECK(RecalledText(memory, id, 1) == "asked");
}

TEST_CASE("identifier 0 has question bit 0: it is never skipped, and remembering it changes nothing") {
    Memory memory;
    Remember(memory, *Decode(0), 1);
    Remember(memory, *Decode(0), 7);
    CHECK(memory.AnswerYesMask == Memory().AnswerYesMask);
    CHECK(memory.AnswerNoMask == Memory().AnswerNoMask);
    memory.AnswerYesMask[0] = -1;
    CHECK(RecalledText(memory, 0, 4) == "asked");
}

TEST_CASE("a Yes-remembered question with the OK-only button set returns the empty text") {
    Memory memory;
    Remember(memory, *Decode(0x10), 1);
    CHECK(RecalledText(memory, 0x10, 0) == "");
}

TEST_CASE("a No-remembered question with button set 0, 2 or 5 is shown again") {
    Memory memory;
    Remember(memory, *Decode(0x10), 7);
    for (const std::int32_t set : {0, 2, 5}) CHECK(RecalledText(memory, 0x10, set) == "asked");
}

TEST_CASE("what is recalled of every button set after Yes, after No and after nothing, in every slot") {
    struct Row {
        std::int32_t set;
        const char *yes, *no;
    };
    constexpr Row rows[] = {{0, "", "asked"}, {1, "1", "2"},    {2, "", "asked"}, {3, "6", "7"},
                            {4, "6", "7"},    {5, "", "asked"}, {6, "", "asked"}, {15, "", "asked"}};
    for (const std::uint32_t id :
         {0x00000010u, 0x80000010u, 0x90000010u, 0xA0000010u, 0xB0000010u, 0xC0000010u, 0xD0000010u}) {
        for (const Row& row : rows) {
            for (const std::int32_t flags : {0, 0x80, 0x40, 0x800000}) {
                CAPTURE(id);
                CAPTURE(row.set);
                Memory none, yes, no;
                Remember(yes, *Decode(Id(id)), 6);
                Remember(no, *Decode(Id(id)), 7);
                const bool forgetsNo = id == 0xC0000010u;
                CHECK(RecalledText(none, Id(id), row.set | flags) == "asked");
                CHECK(RecalledText(yes, Id(id), row.set | flags) == row.yes);
                CHECK(RecalledText(no, Id(id), row.set | flags) == (forgetsNo ? "asked" : row.no));
            }
        }
    }
}

TEST_CASE("an answer is remembered for its own question only") {
    Memory memory;
    Remember(memory, *Decode(Id(0x90000010)), 6);
    CHECK(RecalledText(memory, Id(0x90000010), 4) == "6");
    CHECK(RecalledText(memory, Id(0x90000020), 4) == "asked");
    CHECK(RecalledText(memory, Id(0x80000010), 4) == "asked");
    CHECK(RecalledText(memory, 0x10, 4) == "asked");
}

TEST_CASE("Yes wins where both answers are remembered") {
    Memory memory;
    Remember(memory, *Decode(0x10), 7);
    Remember(memory, *Decode(0x10), 6);
    CHECK(RecalledText(memory, 0x10, 4) == "6");
}

TEST_CASE("OK and Yes are kept as Yes, every other answer as No") {
    for (const std::int32_t answer : {0, 1, 2, 3, 4, 5, 6, 7, 9}) {
        CAPTURE(answer);
        Memory memory;
        Remember(memory, *Decode(Id(0xB0000004)), answer);
        const bool yes = answer == 1 || answer == 6;
        CHECK(memory.AnswerYesMask[5] == (yes ? 4 : 0));
        CHECK(memory.AnswerNoMask[5] == (yes ? 0 : 4));
    }
}

TEST_CASE("a slot-6 question answered No is recorded in slot 0, not in slot 6") {
    Memory memory;
    Remember(memory, *Decode(Id(0xC0000010)), 7);
    CHECK(memory.AnswerNoMask[0] == 0x10);
    CHECK(memory.AnswerNoMask[6] == 0);
    Remember(memory, *Decode(Id(0xC0000010)), 6);
    CHECK(memory.AnswerYesMask[6] == 0x10);
    CHECK(memory.AnswerYesMask[0] == 0);
}

TEST_CASE("the No memory of slot 6 is not read") {
    Memory memory;
    memory.AnswerNoMask[6] = 0x10;
    memory.AnswerNoMask[0] = 0x10;
    CHECK(RecalledText(memory, Id(0xC0000010), 4) == "asked");
    CHECK(RecalledText(memory, 0x10, 4) == "7");
}

TEST_CASE("a slot's masks are written under its code, both of them") {
    struct Row {
        std::uint32_t id;
        const char *yes, *no;
    };
    for (const Row& row : {Row{0x00000010, "ShowMessageBoxYes", "ShowMessageBoxNo"},
                           Row{0x80000010, "2ShowMessageBoxYes", "2ShowMessageBoxNo"},
                           Row{0x90000010, "3ShowMessageBoxYes", "3ShowMessageBoxNo"},
                           Row{0xB0000010, "5ShowMessageBoxYes", "5ShowMessageBoxNo"},
                           Row{0xC0000010, "6ShowMessageBoxYes", "6ShowMessageBoxNo"},
                           Row{0xD0000010, "ShowMessageBoxYes", "ShowMessageBoxNo"}}) {
        CAPTURE(row.id);
        Memory memory;
        Remember(memory, *Decode(Id(row.id)), 6);
        const std::vector<Setting> settings = SettingsOf(memory, *Decode(Id(row.id)));
        REQUIRE(settings.size() == 2);
        CHECK(settings[0].key == row.yes);
        CHECK(settings[0].value == "16");
        CHECK(settings[1].key == row.no);
        CHECK(settings[1].value == "0");
    }
}

TEST_CASE("a question of slot code -1 is remembered in memory and nothing is written for it") {
    Memory memory;
    Remember(memory, *Decode(Id(0xA0000010)), 6);
    CHECK(RecalledText(memory, Id(0xA0000010), 4) == "6");
    CHECK(SettingsOf(memory, *Decode(Id(0xA0000010))).empty());
}

TEST_CASE("a mask of -1 is never written") {
    Memory memory;
    Remember(memory, *Decode(-1), 1);
    CHECK(memory.AnswerYesMask[0] == -1);
    const std::vector<Setting> settings = SettingsOf(memory, *Decode(-1));
    REQUIRE(settings.size() == 1);
    CHECK(settings[0].key == "ShowMessageBoxNo");
}

// --- buttons and results

TEST_CASE("each button set shows its buttons with its captions") {
    struct Row {
        std::int32_t set;
        bool no, cancel;
        std::string_view first, second, third;
        bool yes;
    };
    for (const Row& row :
         {Row{0, false, false, "ButtonOKYes", "", "", false}, Row{1, false, true, "ButtonOKYes", "", "", false},
          Row{2, true, true, "ButtonOKYes3", "ButtonNo3", "", false}, Row{3, true, true, "ButtonOKYes2", "", "", true},
          Row{4, true, false, "ButtonOKYes2", "ButtonNo", "", true},
          Row{5, false, true, "ButtonNo3", "", "ButtonCancel", false},
          Row{6, false, false, "ButtonOKYes", "", "", false}, Row{15, false, false, "ButtonOKYes", "", "", false}}) {
        CAPTURE(row.set);
        const ButtonPlan& plan = PlanOf(SetOf(row.set | 0x40 | 0x80));
        CHECK(plan.showsNo == row.no);
        CHECK(plan.showsCancel == row.cancel);
        CHECK(plan.firstKey == row.first);
        CHECK(plan.secondKey == row.second);
        CHECK(plan.thirdKey == row.third);
        CHECK(plan.firstMeansYes == row.yes);
    }
}

TEST_CASE("with Retry/Cancel, pressing the first button returns 4") {
    CHECK(ResultOf(1, ButtonSet::RetryCancel) == "4");
    CHECK(ResultOf(2, ButtonSet::RetryCancel) == "2");
    for (const ButtonSet set :
         {ButtonSet::OK, ButtonSet::OKCancel, ButtonSet::AbortRetryIgnore, ButtonSet::YesNoCancel, ButtonSet::YesNo}) {
        CHECK(ResultOf(1, set) == "1");
        CHECK(ResultOf(9, set) == "9");
    }
}

TEST_CASE("an input is masked with bit 23 and without bit 22 only") {
    CHECK(IsMasked(0x800000));
    CHECK(IsMasked(0x800081));
    CHECK_FALSE(IsMasked(0xC00000));
    CHECK_FALSE(IsMasked(0x400000));
    CHECK_FALSE(IsMasked(0));
}

// --- prompts

TEST_CASE("a prompt of five fields names all buttons but the one whose field is empty") {
    const Fields fields = SplitPrompt("Text|Go|Stay||All", noCaptions);
    CHECK(fields.prompt == "Text");
    CHECK(fields.captions == std::array<std::string, 3>{"Go", "Stay", ""});
    CHECK(fields.fourthCaption == "All");
}

TEST_CASE("a prompt without a bar is one field") {
    const Fields fields = SplitPrompt("Text", noCaptions);
    CHECK(fields.prompt == "Text");
    CHECK(fields.captions == noCaptions);
    CHECK(fields.fourthCaption.empty());
    CHECK(SplitPrompt("", noCaptions).prompt.empty());
}

TEST_CASE("a bar at the end is an empty field, and what follows the fifth is not read") {
    CHECK(SplitPrompt("Text|", noCaptions).captions == noCaptions);
    CHECK(SplitPrompt("|Go", noCaptions).prompt.empty());
    CHECK(SplitPrompt("|Go", noCaptions).captions[0] == "Go");
    CHECK(SplitPrompt("T|1|2|3|4|5|6", noCaptions).fourthCaption == "4");
}

TEST_CASE("with a caption of the caller's own the prompt is not divided") {
    const Fields fields = SplitPrompt("Text|Go|Stay", {"", "Mine", ""});
    CHECK(fields.prompt == "Text|Go|Stay");
    CHECK(fields.captions == std::array<std::string, 3>{"", "Mine", ""});
}

TEST_CASE("the second byte of a letter is no bar and no at sign") {
    const LeadByte leads = [](char letter) { return letter == '\x81'; };
    CHECK(SplitPrompt("a\x81|b|Go", noCaptions, leads).prompt == "a\x81|b");
    CHECK(SplitPrompt("a\x81|b|Go", noCaptions, leads).captions[0] == "Go");
    CHECK_FALSE(FindLink("a\x81@b", leads));
    CHECK(SplitPrompt("a\x81", noCaptions, leads).prompt == "a\x81");
}

TEST_CASE("a link begins with http, else with www, else around an at sign, and ends at the next blank") {
    CHECK(Linked("See http://a.b/c now") == "http://a.b/c");
    CHECK(Linked("See www.a.b and http://c.d") == "http://c.d");
    CHECK(Linked("Mail x@y.z or www.a.b") == "www.a.b");
    CHECK(Linked("Mail to anna_1.b@y.z please") == "anna_1.b@y.z");
    CHECK(Linked("Mail to Anna@y.z") == "Anna@y.z");
    CHECK(Linked("https://end") == "https://end");
    CHECK(Linked("no link here") == "none");
    CHECK(Linked("") == "none");
}

TEST_CASE("an address at the very beginning of the prompt keeps its first letter") {
    CHECK(Linked("joe@x.com") == "joe@x.com");
    CHECK(Linked("joe@x.com is his address") == "joe@x.com");
    CHECK(OfferedLink("joe@x.com") == "mailto:joe@x.com");
    CHECK(Linked("a@y.z") == "a@y.z");

    CHECK(Linked("@") == "@");
    CHECK(Linked(" anna@y.z") == "anna@y.z");
}

TEST_CASE("an address ends to the left at a sign that addresses do not have") {
    CHECK(Linked("write:anna@y.z") == "anna@y.z");
    CHECK(Linked("two anna-b@y.z") == "b@y.z");
}

TEST_CASE("the form offers a link without the rest of its line's sentence, and an address as mail") {
    CHECK(OfferedLink("See http://a.b/c.") == "http://a.b/c");
    CHECK(OfferedLink("See http://a.b/c\rNext line") == "http://a.b/c");
    CHECK(OfferedLink("(see www.a.b)") == "www.a.b");
    CHECK(OfferedLink("Mail to anna@y.z!") == "mailto:anna@y.z");
    CHECK(OfferedLink("http://a.b/") == "http://a.b/");
}

TEST_CASE("the form offers nothing where a link has no more than its beginning") {
    for (const char* prompt : {"the http protocol", "http://", "www. ", "a @ b", "you @home", "at@ ", "none", ""}) {
        CAPTURE(prompt);
        CHECK(OfferedLink(prompt).empty());
    }
}

// --- counting

TEST_CASE("a count goes on from what is written, and not beyond what fits") {
    CHECK(NextCount("") == 1);
    CHECK(NextCount("2") == 3);
    CHECK(NextCount("x") == 1);
    CHECK_FALSE(NextCount("2147483647"));
    CHECK_FALSE(NextCount("99999999999"));
}

TEST_CASE("the key of a count is the identifier in hexadecimal") {
    CHECK(CountKey(Id(0x90000010)) == "90000010Asked");
    CHECK(CountKey(-1) == "FFFFFFFFAsked");
    CHECK(CountKey(0) == "0Asked");
}

// --- keys

TEST_CASE("with the captions &Yes and &No, N chooses No and Y the first button") {
    const Captions captions{"&Yes", "&No", ""};
    CHECK(ChosenBy('n', captions) == Choice::No);
    CHECK(ChosenBy('N', captions) == Choice::No);
    CHECK(ChosenBy('y', captions) == Choice::First);
    CHECK(ChosenBy('x', captions) == Choice::None);
    CHECK(ChosenBy('e', captions) == Choice::None);
}

TEST_CASE("where captions share a letter, No goes before Cancel and Cancel before the first button") {
    CHECK(ChosenBy('a', {"&All", "&Another", "&Abort"}) == Choice::No);
    CHECK(ChosenBy('a', {"&All", "", "&Abort"}) == Choice::Cancel);
    CHECK(ChosenBy('a', {"&All", "", ""}) == Choice::First);
}

TEST_CASE("a doubled mark and a mark at the end are no access key") {
    CHECK_FALSE(HasAccessKey("R&&D", 'd'));
    CHECK_FALSE(HasAccessKey("Save&", '\0'));
    CHECK_FALSE(HasAccessKey("", 'a'));
    CHECK(HasAccessKey("R&&&D", 'd'));
    CHECK_FALSE(HasAccessKey("R&&D", '&'));
}
