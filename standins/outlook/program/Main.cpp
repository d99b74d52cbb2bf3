#include "outlook/program/Main.h"

#include <commctrl.h>
#include <shellapi.h>

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "outlook/program/ClassServer.h"
#include "outlook/program/Versions.h"

namespace program {
namespace {

using standin::FolderKind;
using Scenarios = std::span<const Scenario>;

struct Arguments {
    int version = 11;
    const Scenario* scenario = nullptr;
    std::string record;
    bool report = false;
    bool ribbon = true;  // the host asks add-ins for it, in the versions that have one
    bool registerServer = false, unregisterServer = false;
};

std::vector<std::string> Words() {
    std::vector<std::string> words;
    int count = 0;
    LPWSTR* list = CommandLineToArgvW(GetCommandLineW(), &count);
    for (int i = 1; i < count; ++i) {
        std::string word;
        for (const wchar_t* letter = list[i]; *letter; ++letter) word.push_back(static_cast<char>(*letter));
        words.push_back(word);
    }
    LocalFree(list);
    return words;
}

bool ReadVersion(const std::string& name, int& number) {
    for (const KnownVersion& version : versions) {
        if (name != version.name) continue;
        number = version.number;
        return true;
    }
    return false;
}

const Scenario* Named(Scenarios scenarios, const std::string& name) {
    for (const Scenario& scenario : scenarios)
        if (name == scenario.name) return &scenario;
    return nullptr;
}

std::optional<Arguments> ReadArguments(Scenarios scenarios) {
    Arguments arguments;
    const std::vector<std::string> words = Words();
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string value = i + 1 < words.size() ? words[i + 1] : "";
        if (words[i] == "/report") {
            arguments.report = true;
        } else if (words[i] == "/noribbon") {
            arguments.ribbon = false;
        } else if (words[i] == "/regserver") {
            arguments.registerServer = true;
        } else if (words[i] == "/unregserver") {
            arguments.unregisterServer = true;
        } else if (words[i] == "/version" && ReadVersion(value, arguments.version)) {
            ++i;
        } else if (words[i] == "/record" && !value.empty()) {
            arguments.record = value;
            ++i;
        } else if (words[i] == "/play" && Named(scenarios, value)) {
            arguments.scenario = Named(scenarios, value);
            ++i;
        } else {
            return std::nullopt;
        }
    }
    return arguments;
}

// What a mailbox has that is in use.
void FillMailbox(standin::Outlook& outlook) {
    const auto contact = [&](const char* name, const char* company, const char* business, const char* mobile) {
        outlook.AddItem(FolderKind::Contacts, {{"FullName", name},
                                               {"CompanyName", company},
                                               {"BusinessTelephoneNumber", business},
                                               {"MobileTelephoneNumber", mobile}});
    };
    contact("Ann Baker", "Baker & Sons", "020 555 0110", "0170 555 0110");
    contact("Carla Diaz", "Diaz Travel", "030 555 0121", "0171 555 0121");
    contact("Erik Fischer", "Fischer GmbH", "040 555 0132", "0172 555 0132");
    contact("Grace Hill", "", "", "0173 555 0143");
    outlook.AddItem(FolderKind::Inbox, {{"SenderName", "Carla Diaz"}, {"Subject", "Tickets for May"}, {"To", "Me"}});
    outlook.AddItem(FolderKind::Inbox,
                    {{"SenderName", "Erik Fischer"}, {"Subject", "Offer, second version"}, {"To", "Me"}});
    outlook.AddItem(FolderKind::Inbox,
                    {{"SenderName", "Ann Baker"}, {"Subject", "RE: Lunch on Friday?"}, {"To", "Me"}});
    outlook.AddItem(FolderKind::Calendar, {{"Subject", "Lunch with Ann"},
                                           {"Location", "Corner Cafe"},
                                           {"Start", "2006-05-05 12:30"},
                                           {"End", "2006-05-05 13:30"}});
    outlook.AddItem(FolderKind::Calendar, {{"Subject", "Team meeting"},
                                           {"Location", "Room 2"},
                                           {"Start", "2006-05-08 10:00"},
                                           {"End", "2006-05-08 11:00"}});
    outlook.AddItem(FolderKind::Tasks,
                    {{"Subject", "Answer Erik's offer"}, {"DueDate", "2006-05-04"}, {"PercentComplete", "25"}});
    outlook.AddItem(FolderKind::Tasks, {{"Subject", "Renew the phone contract"}, {"DueDate", "2006-05-31"}});
}

void RunLoop(Program& program) {
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) program.Dispatch(message);
}

// A session without windows stays as long as somebody holds an object of it (Ending::StaysInMemory), and a person has
// not closed the log. One that has ended gives the client that ended it the time to get its answer and to let go.
void AwaitRelease(Program& program, const Stage& stage) {
    constexpr DWORD longest = 2000;
    const DWORD start = GetTickCount();
    const auto waiting = [&] {
        if (program.Host().LookAgain() == standin::Ending::StaysInMemory) return program.ShowsLog();
        return program.Host().References() != 0 && GetTickCount() - start < longest;
    };
    do stage.Pump(50);
    while (waiting());
}

const char* InWords(standin::Ending ending) {
    switch (ending) {
        case standin::Ending::AddInsTold: return "the add-ins were told";
        case standin::Ending::AddInsNotTold: return "the add-ins were not told";
        case standin::Ending::StaysInMemory: return "it stays in memory";
        case standin::Ending::StillRunning: break;
    }
    return "it still runs";
}

void Report(const standin::Outlook& outlook, const Stage& stage) {
    stage.Say(std::string("ended: ") + InWords(outlook.HowItEnded()));
    stage.Say("references: " + std::to_string(outlook.References()));
    for (const std::string& line : outlook.ReferenceList()) stage.Say("held: " + line);
    stage.Say("sinks: " + std::to_string(outlook.Advises()));
    for (const std::string& line : outlook.Complaints()) stage.Say("complaint: " + line);
}

void Serve(Program& program, const Arguments& arguments) {
    const Stage stage(program);
    {
        const ClassServer server(program.Host());
        if (arguments.report && server.Offered()) stage.Say("ready");
        RunLoop(program);
    }
    AwaitRelease(program, stage);
    if (arguments.report) Report(program.Host(), stage);
}

int Play(Program& program, const Scenario& scenario) {
    const Stage stage(program);
    scenario.play(stage);
    if (!program.Over()) program.Host().Quit();
    stage.Pump(100);
    return stage.AllRight() ? 0 : 1;
}

}  // namespace

int Main(std::span<const Scenario> scenarios) {
    const std::optional<Arguments> arguments = ReadArguments(scenarios);
    if (!arguments) return 2;
    if (arguments->registerServer) return RegisterServer() ? 0 : 1;
    if (arguments->unregisterServer) return UnregisterServer() ? 0 : 1;
    InitCommonControls();
    standin::Options options{.version = arguments->version};
    if (!arguments->ribbon) options.ribbon.asked = standin::RibbonAsked::Never;
    Program program(options, arguments->record);
    FillMailbox(program.Host());
    program.Start();
    if (arguments->scenario) return Play(program, *arguments->scenario);
    Serve(program, *arguments);
    return 0;
}

}  // namespace program
