#include "check/Judge.h"

#include <algorithm>
#include <array>

#include "check/Keys.h"
#include "check/Resiliency.h"
#include "platform/Text.h"
#include "support/AddInNames.h"
#include "support/FilePaths.h"
#include "support/RegistryKeys.h"

using platform::Decimal;
using platform::SameIgnoringCase;

namespace Check {
namespace {

using Changes = std::vector<Change>;

constexpr std::uint64_t hour = 36'000'000'000;  // in units of 100 nanoseconds

// What is filled in; views, so that each finding takes few instructions.
struct Fill {
    std::string_view a{}, b{}, c{};
};

// All checks over one snapshot, each a member that adds to the findings.
class Judgement {
  public:
    explicit Judgement(const Snapshot& snapshot) : now_(snapshot), outlook_(MainOutlook(snapshot)) {
        bits_ = outlook_ ? BitsOf(now_, *outlook_) : 32;
        bitsText_ = Decimal(bits_);
    }

    std::vector<Finding> All() {
        Outlooks();
        Class();
        Entry();
        Disabled();
        Policies();
        Session();
        Corvella();
        Lists();
        Language();
        Settings();
        Controls();
        Log();
        Placements();
        return std::move(found_);
    }

  private:
    [[gnu::noinline]] void Add(Sign sign, const char* key, const Fill& fill = {}, Changes mend = {}) {
        Finding& finding = found_.emplace_back();
        finding.sign = sign;
        finding.key = key;
        for (const std::string_view text : {fill.a, fill.b, fill.c}) finding.fill.emplace_back(text);
        finding.mend = std::move(mend);
    }
    [[gnu::noinline]] void Fine(const char* key, const Fill& fill = {}) { Add(Sign::Fine, key, fill); }
    [[gnu::noinline]] void Hint(const char* key, const Fill& fill = {}) { Add(Sign::Hint, key, fill); }
    [[gnu::noinline]] void Fault(const char* key, const Fill& fill = {}) { Add(Sign::Fault, key, fill); }
    [[gnu::noinline]] void Fault(const char* key, const Fill& fill, Changes mend) {
        Add(Sign::Fault, key, fill, std::move(mend));
    }
    // Fine where a check has added nothing.
    [[gnu::noinline]] void FineUnless(std::size_t before, const char* key, const Fill& fill = {}) {
        if (found_.size() == before) Fine(key, fill);
    }

    // --- Outlook

    void Outlooks() {
        if (!outlook_) return now_.newOutlook ? Fault("OutlookNew") : Fault("OutlookMissing");
        const std::string name = NameOfOutlook(outlook_->version);
        if (now_.FileAt(outlook_->program).found == Found::Missing) {
            return Fault("OutlookGone", {name, outlook_->program});
        }
        Fine(now_.outlookRuns ? "OutlookRuns" : "OutlookFine", {name, bitsText_});
    }

    // --- the class

    // A library for this Outlook, registered for the other scope or beside this program; empty: none.
    [[nodiscard]] std::string GoodLibrary() const {
        for (const ClassEntry& entry : now_.classes) {
            if (entry.view == bits_ && IsGood(entry.path)) return entry.path;
        }
        std::string beside = LibraryBeside(now_.ownFolder, bits_);
        return IsGood(beside) ? beside : std::string();
    }
    [[nodiscard]] bool IsGood(const std::string& path) const {
        const Program file = now_.FileAt(path);
        return SameIgnoringCase(Files::GetFileNamePart(path), AddInNames::Library) && file.found == Found::There &&
               file.bits == bits_ && file.isLibrary && file.whole;
    }

    [[nodiscard]] Changes NameTheLibrary(const std::string& path) const {
        return {WriteText(Root::CurrentUser, ViewOf(bits_), Keys::Library, "", path)};
    }
    [[nodiscard]] static Changes LeadNameToClass() {
        return {WriteText(Root::CurrentUser, RegistryView::Own, Keys::Name, "", AddInNames::ProgId),
                WriteText(Root::CurrentUser, RegistryView::Own, Keys::NameToClass, "", AddInNames::ClassId)};
    }
    [[nodiscard]] Changes RegisterForUser() const {
        const std::string path = GoodLibrary();
        if (path.empty()) return {};
        const RegistryView view = ViewOf(bits_);
        Changes changes{WriteText(Root::CurrentUser, view, Keys::Class, "", AddInNames::ProgId),
                        WriteText(Root::CurrentUser, view, Keys::Library, "", path),
                        WriteText(Root::CurrentUser, view, Keys::Library, "ThreadingModel", "Apartment"),
                        WriteText(Root::CurrentUser, view, Keys::Class + "\\ProgID", "", AddInNames::ProgId)};
        if (!NameLeadsHere()) {
            for (Change& change : LeadNameToClass()) changes.push_back(std::move(change));
        }
        return changes;
    }

    // To which class the add-in's name leads: the user's own hides the machine's.
    [[nodiscard]] const NameEntry* NameInForce() const {
        const NameEntry* machine = nullptr;
        for (const NameEntry& name : now_.names) {
            if (name.classId.found == Found::Missing) continue;
            if (name.scope == Scope::User) return &name;
            machine = &name;
        }
        return machine;
    }
    [[nodiscard]] bool NameLeadsHere() const {
        const NameEntry* const name = NameInForce();
        const auto text = name ? TextOf(name->classId) : std::nullopt;
        return text && SameIgnoringCase(*text, AddInNames::ClassId);
    }

    void Class() {
        const std::size_t before = found_.size();
        const ClassEntry* const entry = ClassFor(now_, bits_);
        if (!entry) return Fault("ClassMissing", {bitsText_}, RegisterForUser());
        if (!TextOf(entry->library)) return Fault("ClassUnreadable", {bitsText_});
        Name();
        Library(*entry);
        FineUnless(before, entry->scope == Scope::User ? "ClassFineUser" : "ClassFineMachine",
                   {entry->path, now_.FileAt(entry->path).version});
    }
    void Name() {
        const NameEntry* const name = NameInForce();
        if (!name) return Fault("NameMissing", {AddInNames::ProgId}, LeadNameToClass());
        const auto text = TextOf(name->classId);
        if (!text) return Fault("NameUnreadable", {AddInNames::ProgId});
        if (!NameLeadsHere()) Fault("NameOther", {AddInNames::ProgId, *text}, LeadNameToClass());
    }
    void Library(const ClassEntry& entry) {
        const Program file = now_.FileAt(entry.path);
        const std::string good = GoodLibrary();
        const Changes mend = good.empty() ? Changes() : NameTheLibrary(good);
        if (!SameIgnoringCase(Files::GetFileNamePart(entry.path), AddInNames::Library))
            return Fault("LibraryOther", {entry.path}, mend);
        if (file.found == Found::Missing) return Fault("LibraryMissing", {entry.path}, mend);
        if (file.found == Found::Unreadable) return Fault("LibraryUnreadable", {entry.path}, mend);
        if (file.bits == 0 || !file.isLibrary || !file.whole) return Fault("LibraryDamaged", {entry.path}, mend);
        if (file.bits != bits_) return Fault("LibraryBits", {entry.path, Decimal(file.bits), bitsText_}, mend);
        Versions(entry, file);
    }
    void Versions(const ClassEntry& entry, const Program& file) {
        for (const ClassEntry& other : now_.classes) {
            const bool differs = other.view == bits_ && other.library.found != Found::Missing &&
                                 !SameIgnoringCase(other.path, entry.path);
            if (differs) return Hint("LibraryTwice", {entry.path, other.path});
        }
        if (!now_.ownVersion.empty() && !file.version.empty() && file.version != now_.ownVersion) {
            Hint("LibraryVersion", {file.version, now_.ownVersion});
        }
    }

    // --- the entry in Outlook's list

    // The user's own hides the machine's.
    [[nodiscard]] const AddInEntry* EntryInForce() const {
        const AddInEntry* machine = nullptr;
        for (const AddInEntry& entry : now_.entries) {
            if (entry.found == Found::Missing || entry.clickToRun) continue;
            if (entry.scope == Scope::User) return &entry;
            if (entry.view == bits_) machine = &entry;
        }
        return machine;
    }
    [[nodiscard]] bool IsListedInOtherView() const {
        return std::any_of(now_.entries.begin(), now_.entries.end(), [&](const AddInEntry& entry) {
            return entry.found != Found::Missing && entry.scope == Scope::Machine && !entry.clickToRun &&
                   entry.view != bits_;
        });
    }
    [[nodiscard]] static Changes WholeEntry() {
        constexpr auto own = RegistryView::Own;
        return {WriteText(Root::CurrentUser, own, Keys::AddIn, "FriendlyName", AddInNames::FriendlyName),
                WriteText(Root::CurrentUser, own, Keys::AddIn, "Description", AddInNames::Description),
                WriteNumber(Root::CurrentUser, own, Keys::AddIn, "LoadBehavior", AddInNames::LoadBehavior)};
    }

    void Entry() {
        const AddInEntry* const entry = EntryInForce();
        if (!entry) {
            return IsListedInOtherView() ? Fault("EntryOtherView", {bitsText_}, WholeEntry())
                                         : Fault("EntryMissing", {}, WholeEntry());
        }
        const std::size_t before = found_.size();
        if (entry->found == Found::Unreadable) return Fault("EntryUnreadable");
        LoadBehavior(*entry);
        if (found_.size() == before && entry->scope == Scope::Machine) PrivateList();
        FineUnless(before, entry->scope == Scope::User ? "EntryFineUser" : "EntryFineMachine");
    }
    void LoadBehavior(const AddInEntry& entry) {
        const auto number = NumberOf(entry.loadBehavior);
        if (number == AddInNames::LoadBehavior) return;
        // Where only the machine has an entry, the user's own goes in front of it.
        const Changes mend = entry.scope == Scope::User ? Changes{WholeEntry().back()} : WholeEntry();
        if (entry.loadBehavior.found == Found::Missing) return Fault("LoadMissing", {}, mend);
        if (entry.loadBehavior.found == Found::Unreadable) return Fault("EntryUnreadable");
        if (!number) return Fault("LoadNoNumber", {}, mend);
        struct Meaning {
            std::uint32_t number;
            const char* key;
        };
        constexpr Meaning meanings[] = {{0, "Load0"}, {1, "Load1"}, {2, "Load2"},
                                        {8, "Load8"}, {9, "Load9"}, {16, "Load16"}};
        for (const Meaning& meaning : meanings) {
            if (meaning.number == *number) return Fault(meaning.key, {}, mend);
        }
        Fault("LoadOther", {Decimal(static_cast<std::int32_t>(*number))}, mend);
    }
    // The list that Click-to-Run keeps for itself comes before the machine's.
    void PrivateList() {
        for (const AddInEntry& entry : now_.entries) {
            const bool hides = entry.clickToRun && entry.found == Found::There && entry.view == bits_ &&
                               NumberOf(entry.loadBehavior) != AddInNames::LoadBehavior;
            if (hides) return Fault("EntryPrivate", {}, WholeEntry());
        }
    }

    // --- what Outlook has switched off

    [[nodiscard]] bool IsInstalled(int version) const {
        return now_.outlooks.empty() || std::any_of(now_.outlooks.begin(), now_.outlooks.end(),
                                                    [&](const Outlook& outlook) { return outlook.version == version; });
    }

    void Disabled() {
        const std::size_t before = found_.size();
        for (const ListedItem& item : now_.listed) {
            if (IsInstalled(item.version)) Listed(item);
        }
        for (const VersionFacts& facts : now_.versions) {
            if (IsInstalled(facts.version)) NamedInLists(facts);
        }
        FineUnless(before, "DisabledFine");
    }
    void Listed(const ListedItem& item) {
        const auto entry = Resiliency::Parse(item.value.bytes);
        const std::string list = item.atStart ? "StartupItems" : "DisabledItems";
        const std::string name = NameOfOutlook(item.version);
        const Fill fill{name, list};
        bool ours = false, mentioned = false;
        for (const std::u16string& lower : now_.lowerPaths) {
            ours = ours || (entry && Resiliency::SameFolded(entry->path, lower));
            mentioned = mentioned || Resiliency::Holds(item.value.bytes, lower);
        }
        if (!ours) {
            if (!entry && mentioned) Hint("DisabledUnclear", fill);
            return;
        }
        const Changes mend{
            Remove(Root::CurrentUser, RegistryView::Own, Keys::Resiliency(item.version, list), item.name)};
        if (item.atStart) return now_.outlookRuns ? void() : Add(Sign::Hint, "DisabledAtStart", fill, mend);
        Fault(entry->kind == Resiliency::slowAddIn ? "DisabledSlow" : "DisabledCrash", fill, mend);
    }
    void NamedInLists(const VersionFacts& facts) {
        const auto remove = [&](const char* list) {
            return Changes{Remove(Root::CurrentUser, RegistryView::Own, Keys::Resiliency(facts.version, list),
                                  AddInNames::ProgId)};
        };
        const std::string name = NameOfOutlook(facts.version);
        const Fill fill{name};
        if (facts.crashing.found == Found::There) Fault("Crashing", fill, remove("CrashingAddinList"));
        if (IsZero(facts.managed)) Fault("Blocked", fill, remove("AddinList"));
    }
    // "0", as a text or a number: both are found.
    [[nodiscard]] static bool IsZero(const Value& value) {
        return value.found == Found::There && AddInText(value) == "0";
    }

    void Policies() {
        const std::size_t before = found_.size();
        for (const VersionFacts& facts : now_.versions) {
            if (IsInstalled(facts.version)) PoliciesOf(facts);
        }
        FineUnless(before, "PoliciesFine");
    }
    void PoliciesOf(const VersionFacts& facts) {
        const std::string name = NameOfOutlook(facts.version);
        const Fill fill{name};
        const auto either = [](const Value(&values)[2], auto&& holds) { return holds(values[0]) || holds(values[1]); };
        const auto isSet = [](const Value& value) { return AddInText(value) == "1"; };
        const auto isThere = [](const Value& value) { return value.found == Found::There; };
        if (either(facts.policy, IsZero)) return Fault("PolicyBlocked", fill);
        if (either(facts.noAddIns, isSet)) return Fault("PolicyNoAddIns", fill);
        if (either(facts.onlyListed, isSet) && !either(facts.policy, isThere)) return Fault("PolicyOnlyListed", fill);
        if (either(facts.onlySigned, isSet)) Fault("PolicyOnlySigned", fill);
    }

    void Session() {
        const bool active = platform::Val(AddInText(now_.active)) != 0;
        if (!active) return Fine("SessionFine");
        if (now_.outlookRuns) return Fine("SessionRuns");
        Add(Sign::Hint, "SessionLeft", {},
            {Remove(Root::CurrentUser, RegistryView::Own, RegistryKeys::AddIn, "Active")});
    }

    // --- Corvella

    [[nodiscard]] bool HoldsCorvella(const std::string& folder) const {
        return !folder.empty() && now_.FileAt(folder + "Corvella.exe").found == Found::There;
    }
    // The folder that is found in any way; empty: none.
    [[nodiscard]] std::string KnownCorvella() const {
        for (const std::string& folder : FoldersOfCorvella(now_, bits_)) {
            if (HoldsCorvella(folder)) return folder;
        }
        return {};
    }
    // The machine's path comes first for sending, so a wrong one there has to be mended there.
    [[nodiscard]] Changes WritePath(bool forCommands, bool forSending) const {
        const std::string folder = KnownCorvella();
        const int view = bits_ == 64 ? 1 : 0;
        Changes changes;
        if (folder.empty()) return changes;
        const bool machineIsWrong = forSending && !AddInText(now_.machinePath[view]).empty();
        if (forCommands || (forSending && !machineIsWrong)) {
            changes.push_back(WriteText(Root::CurrentUser, RegistryView::Own, RegistryKeys::Product, "Path", folder));
        }
        if (machineIsWrong) {
            changes.push_back(WriteText(Root::LocalMachine, ViewOf(bits_), RegistryKeys::Product, "Path", folder));
        }
        return changes;
    }

    void Corvella() {
        if (IsUnreadable(now_.userPath) || IsUnreadable(now_.machinePath[bits_ == 64 ? 1 : 0])) {
            return Fault("CorvellaUnreadable");
        }
        const std::string commands = FolderOfCommands(now_, bits_), sending = FolderOfSending(now_, bits_);
        const bool start = HoldsCorvella(commands), send = HoldsCorvella(sending);
        if (start && send) {
            if (!SameIgnoringCase(commands, sending)) return Hint("CorvellaTwice", {commands, sending});
            return Fine("CorvellaFine", {commands});
        }
        const Changes mend = WritePath(!start, !send);
        if (send) return Fault("CorvellaCommands", {commands}, mend);
        if (start) return Fault("CorvellaSending", {sending.empty() ? "-" : sending}, mend);
        if (commands.empty() && sending.empty()) return Fault("CorvellaUnknown", {}, mend);
        Fault("CorvellaMissing", {sending.empty() ? commands : sending}, mend);
    }

    void Lists() {
        std::int32_t waiting = 0;
        for (const Value& list : now_.lists) {
            if (IsUnreadable(list)) return Hint("ListsUnreadable");
            waiting += EntriesIn(list);
        }
        if (waiting == 0) return Fine("ListsFine");
        const std::string count = Decimal(waiting);
        const Fill fill{count, now_.listsWrittenText};
        const bool long_ = now_.time > now_.listsWritten && now_.time - now_.listsWritten > hour;
        long_ ? Hint("ListsWaiting", fill) : Fine("ListsRecent", fill);
    }

    // --- texts and settings

    void Language() {
        const LanguageFacts& language = now_.language;
        if (language.wantedFound == Found::Unreadable) return Hint("LanguageUnreadable", {language.wanted});
        if (language.wantedFound == Found::Missing) {
            return language.english == Found::There ? Hint("LanguageMissing", {language.wanted})
                                                    : Fault("LanguageNone", {language.wanted});
        }
        const std::size_t before = found_.size();
        if (language.missing > 0) Hint("LanguageIncomplete", {language.file, Decimal(language.missing)});
        if (language.codePage != 0 && language.codePage != language.systemPage) {
            Hint("LanguageLetters", {language.chosen, Decimal(static_cast<std::int32_t>(language.codePage)),
                                     Decimal(static_cast<std::int32_t>(language.systemPage))});
        }
        FineUnless(before, "LanguageFine", {language.file});
    }

    void Settings() {
        const SettingsFacts& settings = now_.settings;
        constexpr std::int32_t inRegistry = 2;
        if (IsUnreadable(settings.storage)) return Hint("SettingsModeUnreadable");
        if (platform::ValLong(AddInText(settings.storage)) == inRegistry) return Fine("SettingsRegistry");
        if (settings.fileFound == Found::Unreadable) return Fault("SettingsUnreadable", {settings.file});
        if (settings.fileFound == Found::Missing) {
            return settings.folderTakesFiles ? Fine("SettingsNone", {settings.folder})
                                             : Hint("SettingsFolder", {settings.folder});
        }
        if (!settings.fileIsWritable) return Hint("SettingsReadOnly", {settings.file});
        if (settings.profileFound == Found::Missing) return Hint("SettingsProfile", {settings.profile});
        if (settings.profile.empty()) return Fine("SettingsFine", {settings.file});
        Fine("SettingsFineProfile", {settings.profile});
    }

    void Controls() {
        const std::size_t before = found_.size();
        const auto joined = [](const std::vector<std::string>& names) {
            std::string text;
            for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
            return text;
        };
        if (!now_.settings.hidden.empty()) Hint("ControlsHidden", {joined(now_.settings.hidden)});
        if (!now_.settings.disabled.empty()) Hint("ControlsDisabled", {joined(now_.settings.disabled)});
        FineUnless(before, "ControlsFine");
    }

    void Log() {
        const LogFacts& log = now_.log;
        if (log.number == 0) return Fine("LogFine");
        if (log.number == -1) return Hint("LogRegistry");
        if (!log.isWritable) return Hint("LogUnwritable", {log.file});
        log.fileFound == Found::There ? Hint("LogOn", {log.file, log.lastWritten}) : Hint("LogOnEmpty", {log.file});
    }

    // --- where the buttons stand

    void Placements() {
        const std::size_t before = found_.size();
        for (const Placement& placement : now_.placements) PlacedBar(placement);
        for (const Placement& placement : now_.placements) PlacedAt(placement);
        FineUnless(before, "PlacementFine");
    }
    void AddPlacement(Sign sign, const char* key, const Placement& placement, const char* word,
                      const std::string& text) {
        const std::string name = Decimal(placement.button) + word;
        Add(sign, key, {name, text}, {Remove(Root::CurrentUser, RegistryView::Own, RegistryKeys::AddIn, name)});
        found_.back().chosenByUser = true;
    }
    // The bars that Outlook has by itself (assumed; a bar that the user made cannot be known here).
    void PlacedBar(const Placement& placement) {
        constexpr std::array known{"Standard", "Menu Bar", "Advanced", "Web", "Formatting"};
        constexpr std::array hidden{"Advanced", "Web"};
        const std::string bar = AddInText(placement.bar);
        const auto isBar = [&](const char* name) { return SameIgnoringCase(name, bar); };
        if (bar.empty()) return;
        if (std::none_of(known.begin(), known.end(), isBar)) {
            AddPlacement(Sign::Hint, "PlacementBar", placement, "Bar", bar);
        } else if (std::any_of(hidden.begin(), hidden.end(), isBar)) {
            AddPlacement(Sign::Hint, "PlacementHiddenBar", placement, "Bar", bar);
        }
    }
    // No bar of Outlook's own has so many controls (assumed): nothing is made where there is no place for it.
    void PlacedAt(const Placement& placement) {
        constexpr std::int32_t mostControls = 30, mostStyles = 15;
        const std::string position = AddInText(placement.position), style = AddInText(placement.style);
        if (platform::ValLong(position) > mostControls)
            AddPlacement(Sign::Fault, "PlacementPosition", placement, "Pos", position);
        const std::int32_t number = platform::ValLong(style);
        if (number < 0 || number > mostStyles) AddPlacement(Sign::Hint, "PlacementStyle", placement, "Style", style);
    }

    const Snapshot& now_;
    const Outlook* outlook_;
    int bits_ = 32;
    std::string bitsText_;
    std::vector<Finding> found_;
};

}  // namespace

Change WriteText(Root root, RegistryView view, std::string key, std::string name, std::string_view text) {
    return {root, view, std::move(key), std::move(name), false, platform::RegistryText, std::string(text) + '\0'};
}

Change WriteNumber(Root root, RegistryView view, std::string key, std::string name, std::uint32_t number) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) bytes.push_back(static_cast<char>(number >> shift & 0xFF));
    return {root, view, std::move(key), std::move(name), false, platform::RegistryNumber, bytes};
}

Change Remove(Root root, RegistryView view, std::string key, std::string name) {
    return {root, view, std::move(key), std::move(name), true, 0, {}};
}

std::vector<Finding> Judge(const Snapshot& snapshot) { return Judgement(snapshot).All(); }

Sign Worst(const std::vector<Finding>& findings) {
    Sign worst = Sign::Fine;
    for (const Finding& finding : findings) worst = std::max(worst, finding.sign);
    return worst;
}

std::string NameOfOutlook(int version) {
    struct Year {
        int version;
        const char* name;
    };
    constexpr Year years[] = {{9, "2000"},  {10, "2002"}, {11, "2003"}, {12, "2007"},
                              {14, "2010"}, {15, "2013"}, {16, "2016+"}};
    for (const Year& year : years) {
        if (year.version == version) return std::string("Outlook ") + year.name;
    }
    return "Outlook " + Decimal(version);
}

}  // namespace Check
