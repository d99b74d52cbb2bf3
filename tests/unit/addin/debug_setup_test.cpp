// The debug log at the start of a session: modes, rotation, the questions after an unclean end.
#include <doctest.h>
#include <windows.h>

#include <algorithm>
#include <string>
#include <vector>

#include "addin/DebugSetup.h"
#include "config/IniFile.h"
#include "language/Language.h"
#include "platform/Err.h"
#include "platform/Text.h"
#include "support/Debug.h"
#include "support/Files.h"
#include "support/Prompt.h"
#include "support/RegEdit.h"
#include "testing/PrivateRegistry.h"
#include "testing/TempFolder.h"

using Debug::state;
using Debug::WriteDebug;
using DebugSetup::InitDebug;
using platform::Err;

namespace {

const std::string addInKey = "Software\\Quillmark\\Corvella\\OlAddIn";
const std::string traceKey = "Software\\Quillmark\\Corvella\\Debug";
const std::string virusScannerKey = "SOFTWARE\\KasperskyLab\\InstalledProducts\\Kaspersky Anti-Virus Personal";
const std::string logName = "CorvellaAddIn.dbg.xml";

std::string addInFolder;
bool anotherInstance = false;
std::string hostCommandLine;

std::string AddInFolder() { return addInFolder; }

void FindSettings() {
    IniFile::location.BaseFile = addInFolder + "corvella.ini";
    IniFile::location.CurrentFile = addInFolder + "profile.ini";
}

class Fixture : public Prompt::Port {
  public:
    Fixture() {
        state = {};
        addInFolder = folder.Path();
        anotherInstance = false;
        hostCommandLine = "outlook.exe";
        Files::Plug({.applicationPath = AddInFolder});
        DebugSetup::Plug({FindSettings, [] { return anotherInstance; }, [] { return hostCommandLine; }});
        Debug::Plug(DebugSetup::PortsOfDebug());
        IniFile::IniInit(false);
        IniFile::location = {};
        Prompt::Plug(this);
        WriteLanguageFile("[Messages]\r\nDebug1=Corvella 1 %f|%e| Corvella\r\nDebug2=Corvella %f 2\r\n");
        Err().Clear();
    }
    ~Fixture() override {
        Prompt::Plug(nullptr);
        DebugSetup::Plug({});
        IniFile::location = {};
        Debug::Plug({});
        Files::Plug({});
        state = {};
    }

    void WriteLanguageFile(const std::string& text) const {
        folder.Write("English.lng", text);
        const IniFile::Location unknown = IniFile::location;
        FindSettings();  // or the language would
        Language::LangInit();
        IniFile::location = unknown;
    }
    void PutBaseMode(const std::string& mode) const {
        folder.Write("corvella.ini", "[Settings]\r\nx=1\r\n[Debug]\r\nDebugMode=" + mode + "\r\nMaxSize=1\r\n");
    }
    void PutMaxSize(const std::string& size) const {
        folder.Write("profile.ini", "[Settings]\r\nx=1\r\n[Debug]\r\nDebugMode=8\r\nMaxSize=" + size + "\r\n");
    }
    static void PutMode(const std::string& mode) {
        PrivateRegistry::PutText(HKEY_CURRENT_USER, addInKey, "DebugMode", mode);
    }
    static void PutActive(const std::string& active) {
        PrivateRegistry::PutText(HKEY_CURRENT_USER, addInKey, "Active", active);
    }
    static PrivateRegistry::Value StoredMode() {
        return PrivateRegistry::Raw(HKEY_CURRENT_USER, addInKey, "DebugMode");
    }
    static void InstallVirusScanner() {
        PrivateRegistry::PutText(HKEY_LOCAL_MACHINE, virusScannerKey, "Folder", "C:\\KAV");
    }
    [[nodiscard]] std::string Log() const { return folder.Read(logName); }

    std::int32_t Ask(std::int32_t questionId, std::string& prompt, std::int32_t buttons,
                     const std::string& title) override {
        WriteDebug("MsgInputBox", 0);
        CHECK(questionId == -1);
        CHECK((buttons & 15) == 1);
        CHECK(title.empty());
        asked.push_back(prompt);
        activeWhileAsked = state.DebugActive;
        WriteDebug("MsgInputBox", 999);
        return answer;
    }
    std::string Input(const std::string&, const std::string&, const std::string&, bool&) override { return {}; }
    std::int32_t Message(std::int32_t questionId, std::int32_t number, std::int32_t buttons, const std::string&,
                         const std::string&, const std::string&, const std::string&, std::int32_t) override {
        CHECK(questionId == static_cast<std::int32_t>(0xD0000040u));
        CHECK(buttons == 0x40);
        messages.push_back(number);
        return 0;
    }

    PrivateRegistry registry;
    TempFolder folder;
    std::int32_t answer = 2;  // the second button
    std::vector<std::string> asked;
    std::vector<std::int32_t> messages;
    bool activeWhileAsked = false;
};

const std::string newLog = "<start>_\r\n\r\n";

}  // namespace

TEST_CASE_FIXTURE(Fixture, "without a mode the log stays off, without a question and without a file") {
    InitDebug(false, false);
    CHECK_FALSE(state.DebugActive);
    CHECK(state.DebugLevel == 0);
    CHECK(state.DebugKey == addInKey);
    CHECK(state.DebugFile == folder.Path(logName));
    CHECK(asked.empty());
    CHECK_FALSE(folder.Exists(logName));
}

TEST_CASE_FIXTURE(Fixture, "a mode in the registry switches the log on when the user keeps it") {
    PutMode("1");
    InitDebug(false, false);
    CHECK(asked == std::vector<std::string>{"Corvella %f 2"});
    CHECK(activeWhileAsked);
    CHECK(state.DebugActive);
    CHECK(state.DebugLevel == 1);
    CHECK(Log() == newLog);
    CHECK(StoredMode().bytes == "1");
}

TEST_CASE_FIXTURE(Fixture, "after the set-up the first procedures stand one blank deep") {
    PutMode("1");
    InitDebug(false, false);
    WriteDebug("A", 0);
    WriteDebug("B", 0);
    WriteDebug("B", 999);
    WriteDebug("A", 999);
    CHECK(Log() == newLog + " <A>_\r\n  <B>_\r\n  </B>\r\n </A>\r\n");
}

TEST_CASE_FIXTURE(Fixture, "the first button switches the log off and clears the mode in the registry") {
    PutMode("17");
    answer = 1;
    InitDebug(false, false);
    CHECK(asked.size() == 1);
    CHECK_FALSE(state.DebugActive);
    CHECK(state.DebugLevel == 0);
    CHECK_FALSE(StoredMode().present);
    CHECK_FALSE(folder.Exists(logName));
}

TEST_CASE_FIXTURE(Fixture, "a mode of 0 in the registry leaves the word to the base settings file") {
    PutBaseMode("17");
    for (const char* mode : {"0", "", "none"}) {
        state = {};
        PutMode(mode);
        InitDebug(false, false);
        CHECK(state.DebugLevel == 17);
        CHECK(state.DebugActive);
    }
    state = {};
    PutMode("1");
    InitDebug(false, false);
    CHECK(state.DebugLevel == 1);
}

TEST_CASE_FIXTURE(Fixture, "without a settings file the log is off, and limited to four million bytes") {
    DebugSetup::Plug({nullptr, [] { return anotherInstance; }, [] { return hostCommandLine; }});
    PutBaseMode("17");
    PutMaxSize("10");
    InitDebug(false, false);
    CHECK(state.DebugLevel == 0);
    state = {};
    PutMode("1");
    folder.Write(logName, std::string(4000001, 'x'));
    InitDebug(false, false);
    CHECK(Log() == newLog);
}

TEST_CASE_FIXTURE(Fixture, "with 17 the lines carry time stamps") {
    PutMode("17");
    InitDebug(false, false);
    CHECK(Log().find(":<start>_\r\n\r\n") != std::string::npos);
    CHECK(Log().find(":<start>_\r\n\r\n") > 0);
}

TEST_CASE_FIXTURE(Fixture, "an unclean end asks with the add-in's name and the path that the log file has") {
    PutActive("1");
    InitDebug(false, false);
    REQUIRE(asked.size() == 1);
    CHECK(asked[0] == "Corvella AddIn 1 " + folder.Path(logName) + "|| Corvella AddIn");
    CHECK_FALSE(activeWhileAsked);
}

TEST_CASE_FIXTURE(Fixture, "after an unclean end any button but the first leaves the mode as it is") {
    for (const std::int32_t other : {0, 2, 6, 7, 9}) {
        state = {};
        asked.clear();
        PutActive("1");
        answer = other;
        InitDebug(false, false);
        CHECK(asked.size() == 1);
        CHECK_FALSE(state.DebugActive);
        CHECK(state.DebugLevel == 0);
        CHECK_FALSE(folder.Exists(logName));
    }
}

TEST_CASE_FIXTURE(Fixture, "after an unclean end a mode that is set stays in force when the user declines") {
    PutActive("1");
    PutMode("17");
    InitDebug(false, false);
    CHECK(asked.size() == 1);
    CHECK(state.DebugActive);
    CHECK(state.DebugLevel == 17);
    CHECK(StoredMode().bytes == "17");
}

TEST_CASE_FIXTURE(Fixture,
                  "after an unclean end the first button switches the log on with the low four bits of the mode") {
    const struct {
        const char* mode;
        std::int32_t level;
        bool stamps;
    } cases[] = {{"", 1, false},  {"0", 1, false},   {"16", 1, true},  {"17", 1, true},
                 {"18", 2, true}, {"15", 15, false}, {"32", 1, false}, {"-1", 15, true}};
    answer = 1;
    PutActive("1");
    for (const auto& row : cases) {
        CAPTURE(row.mode);
        state = {};
        DeleteFileA(folder.Path(logName).c_str());
        PutMode(row.mode);
        InitDebug(false, false);
        CHECK(state.DebugActive);
        CHECK(state.DebugLevel == row.level);
        CHECK(state.DebugStampsWanted == row.stamps);
        CHECK(Log() == newLog);
    }
}

TEST_CASE_FIXTURE(Fixture, "the host's command line restart suppresses the unclean-end question") {
    PutActive("1");
    hostCommandLine = "\"C:\\Program Files\\outlook.exe\" restart";
    InitDebug(false, false);
    CHECK(asked.empty());
    CHECK(state.DebugLevel == 0);
    state = {};
    PutMode("1");
    InitDebug(false, false);
    CHECK(asked == std::vector<std::string>{"Corvella %f 2"});
}

TEST_CASE_FIXTURE(Fixture, "any other command line of the host does not") {
    PutActive("1");
    for (const char* line : {"outlook.exe restart now", "outlook.exe Restart", "restart", "outlook.exe \"restart\""}) {
        state = {};
        asked.clear();
        hostCommandLine = line;
        InitDebug(false, false);
        CHECK(asked.size() == 1);
    }
}

TEST_CASE_FIXTURE(Fixture, "beside another instance of the host nothing is read, asked or logged") {
    PutActive("1");
    PutMode("1");
    PutBaseMode("1");
    anotherInstance = true;
    for (const bool force : {false, true}) {
        state = {};
        InitDebug(force, false);
        CHECK(asked.empty());
        CHECK_FALSE(state.DebugActive);
        CHECK(state.DebugLevel == 0);
        CHECK_FALSE(folder.Exists(logName));
    }
}

TEST_CASE_FIXTURE(Fixture, "questions that the language file lacks are asked in English words of their own") {
    WriteLanguageFile("[Messages]\r\n");
    PutActive("1");
    InitDebug(false, false);
    state = {};
    PutActive("0");
    PutMode("1");
    InitDebug(false, false);
    REQUIRE(asked.size() == 2);
    CHECK(asked[0].find("Corvella AddIn") == 0);
    CHECK(asked[0].find(".dbg.xml") != std::string::npos);
    CHECK(asked[0].find('%') == std::string::npos);
    CHECK_FALSE(asked[1].empty());
}

TEST_CASE_FIXTURE(Fixture, "a log file of 4000001 bytes is deleted and begun again with start and an empty line") {
    PutMode("1");
    folder.Write(logName, std::string(4000001, 'x'));
    InitDebug(false, false);
    CHECK(Log() == newLog);
}

TEST_CASE_FIXTURE(Fixture, "a log file of exactly 4000000 bytes is kept and only gains an empty line") {
    PutMode("1");
    folder.Write(logName, std::string(4000000, 'x'));
    InitDebug(false, false);
    CHECK((Log() == std::string(4000000, 'x') + "\r\n"));
    CHECK(state.DebugIndent.empty());
}

TEST_CASE_FIXTURE(Fixture, "the settings file may set another size") {
    PutMode("1");
    PutMaxSize("10");
    folder.Write(logName, std::string(11, 'x'));
    InitDebug(false, false);
    CHECK(Log() == newLog);
    state = {};
    folder.Write(logName, std::string(10, 'x'));
    InitDebug(false, false);
    CHECK(Log() == "xxxxxxxxxx\r\n");
}

TEST_CASE_FIXTURE(Fixture, "a file of the log's earlier name is deleted") {
    PutMode("1");
    folder.Write("CorvellaAddIn.dbg", "old");
    InitDebug(false, false);
    CHECK_FALSE(folder.Exists("CorvellaAddIn.dbg"));
    CHECK(folder.Exists(logName));
}

TEST_CASE_FIXTURE(Fixture, "a log file whose name is wrapped in double quotes is written without them") {
    PutMode("1");
    state.DebugFile = "\"" + folder.Path("other.dbg.xml") + "\"";
    InitDebug(true, false);
    CHECK(state.DebugFile == folder.Path("other.dbg.xml"));
    CHECK(folder.Read("other.dbg.xml") == newLog);
}

TEST_CASE_FIXTURE(Fixture, "mode -1 leaves the log file untouched and keeps only the last entry in the registry") {
    PutMode("-1");
    folder.Write(logName, "as it was");
    PutMaxSize("1");
    InitDebug(false, false);
    CHECK(state.DebugActive);
    CHECK(state.DebugLevel == -1);
    CHECK_FALSE(PrivateRegistry::KeyExists(HKEY_CURRENT_USER, traceKey));
    WriteDebug("A", 0);
    WriteDebug("A", 999);
    CHECK(Log() == "as it was");
    CHECK(PrivateRegistry::Raw(HKEY_CURRENT_USER, traceKey, "").bytes == "</A>");
    CHECK(PrivateRegistry::Raw(HKEY_CURRENT_USER, traceKey, "").type == REG_SZ);
}

TEST_CASE_FIXTURE(Fixture, "mode -1 makes no log file") {
    PutMode("-1");
    InitDebug(false, false);
    WriteDebug("A", 0);
    CHECK_FALSE(folder.Exists(logName));
}

TEST_CASE_FIXTURE(Fixture, "every set-up deletes the registry trace") {
    for (const char* mode : {"0", "1", "-1"}) {
        state = {};
        PutMode(mode);
        PrivateRegistry::PutText(HKEY_CURRENT_USER, traceKey, "", "<last>_");
        InitDebug(false, false);
        CHECK_FALSE(PrivateRegistry::KeyExists(HKEY_CURRENT_USER, traceKey));
    }
}

TEST_CASE_FIXTURE(Fixture,
                  "with the settings in the registry, a set-up leaves the section Debug that lies in the same key") {
    PrivateRegistry::PutText(HKEY_CURRENT_USER, traceKey, "", "<last>_");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, traceKey, "MaxSize", "5000");
    InitDebug(false, false);
    CHECK_FALSE(PrivateRegistry::Raw(HKEY_CURRENT_USER, traceKey, "").present);
    CHECK(PrivateRegistry::Raw(HKEY_CURRENT_USER, traceKey, "MaxSize").bytes == "5000");
}

TEST_CASE_FIXTURE(Fixture, "a set-up leaves a key below that of the registry trace") {
    PrivateRegistry::PutText(HKEY_CURRENT_USER, traceKey, "", "<last>_");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, traceKey + "\\Own", "x", "1");
    InitDebug(false, false);
    CHECK_FALSE(PrivateRegistry::Raw(HKEY_CURRENT_USER, traceKey, "").present);
    CHECK(PrivateRegistry::Raw(HKEY_CURRENT_USER, traceKey + "\\Own", "x").bytes == "1");
}

TEST_CASE_FIXTURE(Fixture, "asking for the key alone sets the key and switches the log off") {
    PutMode("1");
    state.DebugActive = true;
    state.DebugIndent = "  ";
    InitDebug(false, true);
    CHECK(state.DebugKey == addInKey);
    CHECK_FALSE(state.DebugActive);
    CHECK(state.DebugIndent.empty());
    CHECK(state.DebugFile.empty());
    CHECK(asked.empty());
}

TEST_CASE_FIXTURE(Fixture, "a second set-up while the log is off does nothing") {
    InitDebug(false, false);
    PutMode("1");
    PrivateRegistry::PutText(HKEY_CURRENT_USER, traceKey, "", "<last>_");
    InitDebug(false, false);
    CHECK_FALSE(state.DebugActive);
    CHECK(asked.empty());
    CHECK(PrivateRegistry::KeyExists(HKEY_CURRENT_USER, traceKey));
}

TEST_CASE_FIXTURE(Fixture, "a second set-up while the log is on adds an empty line and keeps the depth") {
    PutMode("1");
    InitDebug(false, false);
    WriteDebug("A", 0);
    PrivateRegistry::PutText(HKEY_CURRENT_USER, traceKey, "", "<last>_");
    InitDebug(false, false);
    WriteDebug("A", 999);
    CHECK(asked.size() == 1);
    CHECK(Log() == newLog + " <A>_\r\n\r\n </A>\r\n");
    CHECK_FALSE(PrivateRegistry::KeyExists(HKEY_CURRENT_USER, traceKey));
}

TEST_CASE_FIXTURE(Fixture, "a forced set-up asks nothing and begins anew") {
    InitDebug(false, false);
    PutMode("17");
    PutActive("1");
    state.DebugIndent = "   ";
    InitDebug(true, false);
    CHECK(asked.empty());
    CHECK(state.DebugActive);
    CHECK(state.DebugLevel == 1);
    CHECK(Log() == newLog);
}

TEST_CASE_FIXTURE(Fixture, "a forced set-up after a clean end asks nothing and keeps the mode") {
    PutMode("2");
    InitDebug(true, false);
    CHECK(asked.empty());
    CHECK(state.DebugActive);
    CHECK(state.DebugLevel == 2);
    CHECK(StoredMode().bytes == "2");
}

TEST_CASE_FIXTURE(Fixture, "the log can be switched on from outside while the add-in runs, without a question") {
    InitDebug(false, false);
    state.DebugCallCount = 0;
    PutActive("1");
    PutMode("1");
    for (int i = 0; i < 254; ++i) WriteDebug("x", 0);
    CHECK_FALSE(state.DebugActive);
    WriteDebug("x", 0);
    CHECK(state.DebugActive);
    WriteDebug("y", 0);
    CHECK(Log() == newLog + " <y>_\r\n");
    CHECK(asked.empty());
}

TEST_CASE_FIXTURE(Fixture, "the user is warned of the virus scanner when it is installed") {
    DebugSetup::CheckKaspersky();
    CHECK(messages.empty());
    PrivateRegistry::PutText(HKEY_LOCAL_MACHINE, virusScannerKey, "Folder", "");
    DebugSetup::CheckKaspersky();
    CHECK(messages.empty());
    InstallVirusScanner();
    DebugSetup::CheckKaspersky();
    CHECK(messages == std::vector<std::int32_t>{232});
}

TEST_CASE_FIXTURE(Fixture, "a log that the user keeps warns of the virus scanner, one in the registry does not") {
    InstallVirusScanner();
    PutMode("1");
    InitDebug(false, false);
    CHECK(messages.size() == 1);
    for (const char* mode : {"-1", "0"}) {
        state = {};
        PutMode(mode);
        InitDebug(false, false);
        CHECK(messages.size() == 1);
    }
    state = {};
    PutMode("1");
    answer = 1;
    InitDebug(false, false);
    CHECK(messages.size() == 1);
}

TEST_CASE_FIXTURE(Fixture, "after an unclean end the warning comes only where the log was on before") {
    InstallVirusScanner();
    PutActive("1");
    answer = 1;
    InitDebug(false, false);
    CHECK(messages.empty());
    REQUIRE(state.DebugLevel == 1);
    InitDebug(true, false);
    CHECK(messages.size() == 1);
}

TEST_CASE_FIXTURE(Fixture, "nothing runs inside a development environment") {
    CHECK_FALSE(DebugSetup::IsInIde());
    InitDebug(false, false);
    CHECK_FALSE(state.DebugInIde);
}

TEST_CASE_FIXTURE(Fixture, "the set-up changes neither the pending error nor the last error of the thread") {
    PutMode("1");
    Err().Set(13, "Type mismatch");
    SetLastError(1234);
    InitDebug(false, false);
    CHECK(GetLastError() == 1234);
    CHECK(Err().Number() == 13);
    CHECK(Log() == newLog);
}
