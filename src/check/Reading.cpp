#include "check/Reading.h"

#include "check/Keys.h"
#include "check/ProgramFile.h"
#include "check/SettingsRules.h"
#include "config/IniText.h"
#include "config/SettingsFiles.h"
#include "language/LanguageText.h"
#include "platform/Environment.h"
#include "platform/Locale.h"
#include "platform/Module.h"
#include "platform/Text.h"
#include "support/LogLine.h"
#include "support/Product.h"
#include "support/RegistryKeys.h"

using platform::LookedAtKey;
using platform::WithBackslash;

namespace Check {
namespace {

constexpr int versions[] = {9, 10, 11, 12, 14, 15, 16};
constexpr std::size_t mostItems = 500;              // of one of Outlook's lists
constexpr std::uint32_t largestText = 1024 * 1024;  // of a settings or language file

Value ValueAt(Root root, const std::string& key, const std::string& name, RegistryView view = RegistryView::Own) {
    return LookedAtKey(root, key, view).Value(name);
}

Value UserValue(const std::string& key, const std::string& name) { return ValueAt(Root::CurrentUser, key, name); }

// As the add-in reads it.
std::string AddInUserText(const char* key, const char* name) { return AddInText(UserValue(key, name)); }

std::string WithoutQuotes(std::string path) {
    if (path.size() >= 2 && path.front() == '"' && path.back() == '"') path = path.substr(1, path.size() - 2);
    return path;
}

class Reader {
  public:
    Snapshot Read(StepBegins begins) {
        Machine();
        begins("StepOutlook");
        Outlooks();
        begins("StepAddIn");
        AddIn();
        begins("StepLists");
        Lists();
        begins("StepCorvella");
        Corvella();
        begins("StepSettings");
        Settings();
        Language();
        Log();
        Placements();
        return std::move(to_);
    }

  private:
    void Machine() {
        to_.windows = platform::WindowsVersionText();
        to_.time = platform::Now();
        to_.now = platform::TimeText(to_.time);
        to_.userName = platform::EnvironmentVariable("USERNAME");
        to_.has64Bits = platform::HasRegistryViews();
        to_.ownFolder = platform::ModuleFolder();
        to_.ownVersion = platform::FileVersion(platform::ModulePath());
    }

    [[nodiscard]] std::vector<int> Views() const {
        return to_.has64Bits ? std::vector<int>{32, 64} : std::vector<int>{32};
    }

    void LookAtProgram(const std::string& path) {
        if (path.empty()) return;
        Program& program = to_.FileToFill(path);
        const platform::SeenFile seen = platform::LookAtFile(path);
        program.found = seen.found;
        if (seen.found != Found::There || seen.isFolder) {
            if (seen.isFolder) program.found = Found::Missing;
            return;
        }
        program.size = seen.size;
        program.modified = platform::TimeText(seen.modified);
        const platform::SeenText front = platform::LookInto(path, frontOfProgram);
        program.found = front.found;
        ReadHeader(front.bytes, seen.size, program);
        program.version = platform::FileVersion(path);
    }

    // --- Outlook

    void Outlooks() {
        for (const int version : versions) {
            for (const int view : Views()) InstalledOutlook(version, view);
        }
        if (to_.outlooks.empty()) OutlookOfClass();
        for (const Outlook& outlook : to_.outlooks) LookAtProgram(outlook.program);
        const std::string local = platform::EnvironmentVariable("LOCALAPPDATA");
        to_.newOutlook =
            !local.empty() &&
            platform::LookAtFile(WithBackslash(local) + "Microsoft\\WindowsApps\\olk.exe").found == Found::There;
        to_.outlookRuns = platform::ProgramRuns("OUTLOOK.EXE");
    }
    void InstalledOutlook(int version, int view) {
        const RegistryView registryView = ViewOf(view);
        const std::string key = Keys::OfVersion(Keys::Office, version, "");
        const auto path = TextOf(ValueAt(Root::LocalMachine, key + "InstallRoot", "Path", registryView));
        if (!path || path->empty()) return;
        const std::string program = WithBackslash(*path) + "OUTLOOK.EXE";
        for (const Outlook& known : to_.outlooks) {
            if (platform::SameIgnoringCase(known.program, program)) return;
        }
        const auto bitness =
            TextOf(ValueAt(Root::LocalMachine, key.substr(0, key.size() - 1), "Bitness", registryView));
        const int stated = bitness == "x64" ? 64 : bitness == "x86" ? 32 : 0;
        to_.outlooks.push_back({version, view, stated, program, IsClickToRun(version, registryView)});
    }
    [[nodiscard]] static bool IsClickToRun(int version, RegistryView view) {
        const std::string branch = version == 15 ? "15.0\\ClickToRun\\" : "ClickToRun\\";
        return version >= 15 &&
               LookedAtKey(Root::LocalMachine, Keys::Office + branch + "Configuration", view).IsThere() == Found::There;
    }
    // Some installations by Click-to-Run name no folder.
    void OutlookOfClass() {
        constexpr std::string_view name = "Outlook.Application.";
        const auto current = TextOf(ValueAt(Root::LocalMachine, "Software\\Classes\\Outlook.Application\\CurVer", ""));
        if (!current || !platform::SameIgnoringCase(current->substr(0, name.size()), name)) return;
        for (const int view : Views()) {
            const auto path = TextOf(ValueAt(Root::LocalMachine,
                                             "Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\OUTLOOK.EXE", "",
                                             ViewOf(view)));
            if (!path || path->empty()) continue;
            const int version = platform::ValLong(current->substr(name.size()));
            to_.outlooks.push_back({version, view, 0, WithoutQuotes(*path), IsClickToRun(version, ViewOf(view))});
            return;
        }
    }

    // --- the add-in

    void AddIn() {
        for (const Scope scope : {Scope::User, Scope::Machine}) {
            for (const int view : Views()) ClassIn(scope, view);
            to_.names.push_back({scope, ValueAt(RootOf(scope), Keys::NameToClass, "")});
        }
        for (const int view : Views()) LookAtProgram(LibraryBeside(to_.ownFolder, view));
        Entry(Scope::User, 0, false, RegistryView::Own, Keys::AddIn);
        for (const int view : Views()) Entry(Scope::Machine, view, false, ViewOf(view), Keys::AddIn);
        PrivateLists();
        to_.active = UserValue(RegistryKeys::AddIn, "Active");
    }
    void ClassIn(Scope scope, int view) {
        ClassEntry entry{scope, view, ValueAt(RootOf(scope), Keys::Library, "", ViewOf(view)), {}};
        if (const auto text = TextOf(entry.library)) entry.path = WithoutQuotes(platform::Expanded(*text));
        LookAtProgram(entry.path);
        if (!entry.path.empty()) to_.lowerPaths.push_back(platform::LowerUtf16(entry.path));
        to_.classes.push_back(std::move(entry));
    }
    void Entry(Scope scope, int view, bool clickToRun, RegistryView registryView, const std::string& path) {
        const LookedAtKey key(RootOf(scope), path, registryView);
        to_.entries.push_back({scope, view, clickToRun, key.IsThere(), key.Value("LoadBehavior")});
    }
    void PrivateLists() {
        const std::string rest = Keys::AddIn.substr(std::string_view("Software\\").size());
        const int whole = to_.has64Bits ? 64 : 32;
        for (const char* branch : {"ClickToRun\\", "15.0\\ClickToRun\\"}) {
            const std::string software = Keys::Office + branch + "REGISTRY\\MACHINE\\Software\\";
            Entry(Scope::Machine, whole, true, ViewOf(whole), software + rest);
            if (!to_.has64Bits) continue;
            Entry(Scope::Machine, 32, true, ViewOf(whole), std::string(software).append("Wow6432Node\\").append(rest));
        }
    }

    // --- Outlook's lists

    void Lists() {
        for (const int version : versions) {
            if (version == 9) continue;  // it has none
            Items(version, false, "DisabledItems");
            Items(version, true, "StartupItems");
            Facts(version);
        }
    }
    void Items(int version, bool atStart, const char* list) {
        const LookedAtKey key(Root::CurrentUser, Keys::Resiliency(version, list), RegistryView::Own);
        for (const std::string& name : key.ValueNames()) {
            if (to_.listed.size() >= mostItems) return;
            to_.listed.push_back({version, atStart, name, key.Value(name)});
        }
    }
    void Facts(int version) {
        VersionFacts facts;
        facts.version = version;
        facts.crashing = UserValue(Keys::Resiliency(version, "CrashingAddinList"), AddInNames::ProgId);
        facts.managed = UserValue(Keys::Resiliency(version, "AddinList"), AddInNames::ProgId);
        const std::string resiliency = Keys::OfVersion(Keys::Policies, version, "Resiliency");
        const std::string security = Keys::OfVersion(Keys::Policies, version, "Security");
        for (const Scope scope : {Scope::User, Scope::Machine}) {
            const auto at = static_cast<std::size_t>(scope);
            facts.policy[at] = ValueAt(RootOf(scope), resiliency + "\\AddinList", AddInNames::ProgId);
            facts.onlyListed[at] = ValueAt(RootOf(scope), resiliency, "RestrictToList");
            facts.onlySigned[at] = ValueAt(RootOf(scope), security, "RequireAddinSig");
            facts.noAddIns[at] = ValueAt(RootOf(scope), security, "DisableAllAddins");
        }
        to_.versions.push_back(std::move(facts));
    }

    // --- Corvella

    void Corvella() {
        to_.userPath = UserValue(RegistryKeys::Product, "Path");
        for (const int view : Views()) {
            to_.machinePath[view == 64 ? 1 : 0] =
                ValueAt(Root::LocalMachine, RegistryKeys::Product, "Path", ViewOf(view));
        }
        const Outlook* const outlook = MainOutlook(to_);
        const int bits = outlook ? BitsOf(to_, *outlook) : 32;
        for (const std::string& folder : FoldersOfCorvella(to_, bits)) {
            if (!folder.empty()) LookAtProgram(folder + "Corvella.exe");
        }
        const LookedAtKey key(Root::CurrentUser, RegistryKeys::Outlook, RegistryView::Own);
        constexpr const char* lists[] = {"ChangedA", "ChangedC", "ChangedT"};
        for (std::size_t i = 0; i < 3; ++i) to_.lists[i] = key.Value(lists[i]);
        to_.listsWritten = key.LastWritten();
        to_.listsWrittenText = platform::TimeText(to_.listsWritten);
    }

    // --- settings, language, log

    // Where the add-in looks for what lies beside it. Beside a wrong library nothing of it is to be expected.
    [[nodiscard]] std::string AddInFolder() const {
        const Outlook* const outlook = MainOutlook(to_);
        const ClassEntry* const entry = ClassFor(to_, outlook ? BitsOf(to_, *outlook) : 32);
        const Program library = entry ? to_.FileAt(entry->path) : Program();
        const bool ours = library.found == Found::There && library.bits != 0 && library.isLibrary && library.whole &&
                          platform::ToLower(entry->path).ends_with(platform::ToLower(AddInNames::Library));
        return ours ? FolderOf(entry->path) : to_.ownFolder;
    }

    void Settings() {
        SettingsFacts& settings = to_.settings;
        settings.storage = UserValue(RegistryKeys::Settings, "SaveIn");
        settings.iniFiles = UserValue(RegistryKeys::Product, "IniFiles");
        settings.appData =
            AddInText(UserValue("Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders", "AppData"));
        settings.folder = SettingsFolder(platform::ValLong(AddInText(settings.storage)), AddInText(settings.iniFiles),
                                         settings.appData, platform::SystemFolder());
        settings.folderTakesFiles = platform::MayAddFile(NearestFolder(settings.folder));
        settings.file = SettingsFiles::BaseFileIn(settings.folder);
        const platform::SeenText text = platform::LookInto(settings.file, largestText);
        settings.fileFound = text.found;
        if (text.found != Found::There) return;
        settingsText_ = text.bytes;
        settings.fileIsWritable = platform::MayWriteFile(settings.file);
        settings.profile = ProfileFile(settingsText_, settings.folder);
        if (!settings.profile.empty()) settings.profileFound = platform::LookAtFile(settings.profile).found;
        settings.hidden = RestrictedControls(settingsText_, "Hide");
        settings.disabled = RestrictedControls(settingsText_, "Disable");
    }
    // The add-in makes the folders that are missing.
    [[nodiscard]] static std::string NearestFolder(std::string folder) {
        while (platform::LookAtFile(folder).found == Found::Missing) {
            const std::size_t above = folder.rfind('\\', folder.size() < 2 ? 0 : folder.size() - 2);
            if (above == std::string::npos || above + 1 >= folder.size()) break;
            folder.resize(above + 1);
        }
        return folder;
    }
    [[nodiscard]] std::string Setting(std::string_view section, std::string_view key) const {
        return std::string(IniText::Read(settingsText_, section, key).value_or(""));
    }

    void Language() {
        LanguageFacts& language = to_.language;
        language.systemPage = platform::AnsiCodePage();
        language.chosen = Setting("Settings", "Language");
        if (language.chosen.empty())
            language.chosen = LanguageText::LanguageForSystem(
                LanguageText::CodeOfSystem(AddInUserText, platform::AbbreviatedLanguageName));
        const std::string folder = AddInFolder(), english = folder + "English.lng";
        language.wanted = LanguageText::FileName(language.chosen);
        if (!platform::Contains(language.wanted, "\\")) language.wanted = folder + language.wanted;
        platform::SeenText text = platform::LookInto(language.wanted, largestText);
        if (text.found == Found::Missing) {
            const std::string plain = LanguageText::WithPlainFileName(language.wanted);
            if (plain != language.wanted) text = platform::LookInto(plain, largestText);
            if (text.found == Found::There) language.wanted = plain;
        }
        language.wantedFound = text.found;
        const platform::SeenText reference = platform::LookInto(english, largestText);
        language.english = reference.found;
        const bool own = text.found == Found::There;
        language.file = own ? language.wanted : english;
        language.text = LanguageText::WithLineEnds(own ? text.bytes : reference.bytes);
        if (!own) return;
        language.missing = MissingKeys(reference.bytes, text.bytes);
        language.codePage = CodePageOf(text.bytes);
    }

    void Log() {
        LogFacts& log = to_.log;
        log.mode = UserValue(RegistryKeys::AddIn, "DebugMode");
        log.number = platform::ValLong(AddInText(log.mode));
        if (log.number == 0) log.number = platform::ValLong(Setting("Debug", "DebugMode"));
        const std::string folder = AddInFolder();
        log.file = LogLine::FilePath(folder, Product::Name);
        const platform::SeenFile seen = platform::LookAtFile(log.file);
        log.fileFound = seen.found;
        log.lastWritten = platform::TimeText(seen.modified);
        log.isWritable = seen.found == Found::There ? platform::MayWriteFile(log.file) : platform::MayAddFile(folder);
    }

    void Placements() {
        const LookedAtKey key(Root::CurrentUser, RegistryKeys::AddIn, RegistryView::Own);
        for (const int button : {101, 102, 103, 107}) {
            const std::string number = platform::Decimal(button);
            to_.placements.push_back(
                {button, key.Value(number + "Bar"), key.Value(number + "Pos"), key.Value(number + "Style")});
        }
    }

    Snapshot to_;
    std::string settingsText_;
};

}  // namespace

Snapshot ReadSnapshot(StepBegins stepBegins) { return Reader().Read(stepBegins); }

}  // namespace Check
