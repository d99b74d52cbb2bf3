// OutlookStandIn.exe [/version 2000|2002|2003|2007] [/play scenario]
//
// Without /play it runs until its last window is closed. With it the scenario is played and the session ended.
// Exit code 0; 1 when a Check of the scenario was wrong; 2 for a scenario or version that is not known.
#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <optional>
#include <string>
#include <vector>

#include "outlook/program/Stage.h"

namespace {

using namespace program;
using standin::FolderKind;

struct KnownVersion {
    const char* name;
    int number;
};
constexpr KnownVersion versions[] = {{"2000", 9}, {"2002", 10}, {"2003", 11}, {"2007", 12}};

struct Arguments {
    int version = 11;
    std::string scenario;
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

std::optional<Arguments> ReadArguments() {
    Arguments arguments;
    const std::vector<std::string> words = Words();
    for (std::size_t i = 0; i < words.size(); i += 2) {
        if (i + 1 == words.size()) return std::nullopt;
        const std::string& value = words[i + 1];
        bool known = words[i] == "/play" && FindScenario(value);
        if (known) arguments.scenario = value;
        for (const KnownVersion& version : versions) {
            if (words[i] != "/version" || value != version.name) continue;
            arguments.version = version.number;
            known = true;
        }
        if (!known) return std::nullopt;
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

}  // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    const std::optional<Arguments> arguments = ReadArguments();
    if (!arguments) return 2;
    InitCommonControls();
    Program program({.version = arguments->version});
    FillMailbox(program.Host());
    program.Start();
    if (arguments->scenario.empty()) {
        RunLoop(program);
        return 0;
    }
    const Stage stage(program);
    FindScenario(arguments->scenario)->play(stage);
    if (!program.Over()) program.Host().Quit();
    stage.Pump(100);
    return stage.AllRight() ? 0 : 1;
}
