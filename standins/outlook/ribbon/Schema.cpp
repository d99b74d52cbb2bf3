#include "outlook/ribbon/Schema.h"

#include <algorithm>
#include <set>
#include <string_view>

#include "outlook/ribbon/Narrow.h"

namespace standin::ribbon {
namespace {

constexpr const char* earlierSpace = "http://schemas.microsoft.com/office/2006/01/customui";
constexpr const char* laterSpace = "http://schemas.microsoft.com/office/2009/07/customui";
constexpr int outlook2010 = 14;

// Names separated by blanks.
constexpr const char* identity = "id idMso idQ tag ";
constexpr const char* placing = "insertAfterMso insertBeforeMso insertAfterQ insertBeforeQ ";
constexpr const char* label = "label getLabel ";
constexpr const char* visible = "visible getVisible ";
constexpr const char* keyTip = "keytip getKeytip ";
constexpr const char* control =
    "label getLabel showLabel getShowLabel image imageMso getImage showImage getShowImage enabled getEnabled visible "
    "getVisible screentip getScreentip supertip getSupertip description getDescription keytip getKeytip ";
constexpr const char* size = "size getSize ";

struct Shape {
    const char* path;  // the element's name and its parent's, or "*" for any parent
    std::vector<const char*> attributes;
    const char* children;
    bool ordered = false;  // its children come in that order, each once
    int since = 12;        // Outlook's version
};

constexpr const char* menuChildren = "button toggleButton menu menuSeparator splitButton control ";
constexpr const char* groupChildren =
    "button toggleButton menu splitButton dynamicMenu separator labelControl box control ";

// The first that fits.
const std::vector<Shape>& Shapes() {
    static const std::vector<Shape> shapes = {
        {"customUI", {"onLoad loadImage "}, "commands ribbon backstage contextMenus ", true},
        {"commands < customUI", {}, "command "},
        {"command < commands", {"idMso enabled getEnabled onAction "}, ""},
        {"ribbon < customUI", {"startFromScratch "}, "qat tabs contextualTabs ", true},
        {"tabs < ribbon", {}, "tab "},
        {"tab < tabs", {identity, label, visible, keyTip, placing}, "group "},
        {"group < tab",
         {identity, label, visible, keyTip, placing,
          "image imageMso getImage screentip getScreentip supertip getSupertip autoScale "},
         groupChildren},
        {"button < group", {identity, control, size, placing, "onAction "}, ""},
        {"button < box", {identity, control, size, placing, "onAction "}, ""},
        {"button < *", {identity, control, placing, "onAction "}, ""},
        {"toggleButton < group", {identity, control, size, placing, "onAction getPressed "}, ""},
        {"toggleButton < *", {identity, control, placing, "onAction getPressed "}, ""},
        {"menu < group", {identity, control, size, placing, "itemSize "}, menuChildren},
        {"menu < *", {identity, control, placing, "itemSize "}, menuChildren},
        {"dynamicMenu < group", {identity, control, size, placing, "getContent invalidateContentOnDrop "}, ""},
        {"splitButton < group",
         {identity, size, placing, "enabled getEnabled visible getVisible keytip getKeytip "},
         "button toggleButton menu "},
        {"splitButton < *",
         {identity, placing, "enabled getEnabled visible getVisible keytip getKeytip "},
         "button toggleButton menu "},
        {"menuSeparator < *", {"id idQ title getTitle ", placing}, ""},
        {"separator < group", {"id idQ ", visible, placing}, ""},
        {"labelControl < group", {identity, control, placing}, ""},
        {"box < group", {"id idQ boxStyle ", visible, placing}, groupChildren},
        {"control < *", {"idMso idQ ", control, size, placing}, ""},
        {"contextMenus < customUI", {}, "contextMenu ", false, outlook2010},
        {"contextMenu < contextMenus", {"idMso "}, menuChildren, false, outlook2010},
    };
    return shapes;
}

// Built-in names that all public lists of Outlook 2013 and later have. For item windows also in 2007 (assumed).
constexpr const char* explorerIds =
    "TabMail TabContacts TabCalendar TabCalendarTableView TabTasks TabNotes TabJournals TabSendReceive TabFolder "
    "TabView "
    "TabDeveloper TabAddIns GroupMailNew GroupMailDelete GroupMailRespond GroupContactsNew GroupDelete "
    "GroupCommunicate "
    "GroupCalendarNew GroupGoto GroupTasksNew ContextMenuMailItem ContextMenuContactItem ContextMenuFlaggedContactItem "
    "ContextMenuTaskItem ContextMenuCalendarItem ContextMenuCalendarView ContextMenuMultipleItems ContextMenuFolder "
    "ContextMenuStore ContextMenuTableView ContextMenuCardView ContextMenuAttachments ";
constexpr const char* itemIds =
    "TabContact TabAppointment TabTask TabDistributionList TabJournal TabReadMessage TabNewMailMessage TabAddIns "
    "TabDeveloper GroupActions GroupShow GroupCommunicate GroupNames GroupContactOptions GroupAppointmentOptions "
    "GroupManageTask GroupRecurrence GroupTaskOptions GroupRespond ";
constexpr const char* imageIds = "HappyFace Copy Paste Cut SaveAndClose ";

constexpr std::size_t longest = 1024;
constexpr std::size_t longestKeyTip = 3;

bool Holds(std::string_view names, std::string_view name) {
    for (std::size_t start = 0; start < names.size();) {
        const std::size_t end = std::min(names.find(' ', start), names.size());
        if (names.substr(start, end - start) == name) return true;
        start = end + 1;
    }
    return false;
}

bool IsNameStart(wchar_t letter) {
    return (letter >= L'A' && letter <= L'Z') || (letter >= L'a' && letter <= L'z') || letter == L'_' || letter >= 0xC0;
}

// An id of XML without a prefix.
bool IsName(const std::wstring& text) {
    if (text.empty() || !IsNameStart(text.front())) return false;
    return std::all_of(text.begin(), text.end(), [](wchar_t letter) {
        return IsNameStart(letter) || (letter >= L'0' && letter <= L'9') || letter == L'-' || letter == L'.';
    });
}

bool IsFlag(const std::wstring& text) { return text == L"true" || text == L"false" || text == L"1" || text == L"0"; }

class Checker {
  public:
    explicit Checker(const Rules& rules) : rules_(rules) {}

    void CheckRoot(const XmlElement& root) {
        const std::string space = Narrow(root.space);
        if (root.name != L"customUI") return Wrong("the root is " + Narrow(root.name));
        if (space != earlierSpace && !(space == laterSpace && rules_.version >= outlook2010))
            return Wrong("the namespace \"" + space + "\" is not known");
        later_ = space == laterSpace;
        space_ = root.space;
        CheckElement(root, nullptr);
    }
    std::vector<std::string> Found() { return std::move(wrong_); }

  private:
    void Wrong(const std::string& text) { wrong_.push_back(text); }

    [[nodiscard]] const Shape* ShapeOf(const XmlElement& element, const XmlElement* parent) const {
        const std::string name = Narrow(element.name);
        const std::string within = parent ? name + " < " + Narrow(parent->name) : name, anywhere = name + " < *";
        for (const Shape& shape : Shapes()) {
            if (shape.since >= outlook2010 && !later_) continue;
            if (shape.path == within || (parent && shape.path == anywhere)) return &shape;
        }
        return nullptr;
    }

    void CheckElement(const XmlElement& element, const XmlElement* parent) {
        const std::string name = Narrow(element.name);
        const Shape* shape = element.space == space_ ? ShapeOf(element, parent) : nullptr;
        if (!shape)
            return Wrong("the element " + name + " is not known" + (parent ? " in " + Narrow(parent->name) : ""));
        if (element.hasText) Wrong("the element " + name + " may not hold text");
        for (const XmlAttribute& attribute : element.attributes) CheckAttribute(element, *shape, attribute);
        CheckPairs(element);
        CheckIdentity(element, *shape);
        CheckChildren(element, *shape);
    }

    void CheckAttribute(const XmlElement& element, const Shape& shape, const XmlAttribute& attribute) {
        const std::string name = Narrow(attribute.name), owner = Narrow(element.name);
        const bool known = std::any_of(shape.attributes.begin(), shape.attributes.end(),
                                       [&](const char* names) { return Holds(names, name); });
        if (!known) return Wrong("the attribute " + name + " is not known for " + owner);
        const std::wstring& value = attribute.value;
        if (value.empty()) return Wrong("'" + name + "' with value '' violates minLength constraint of '1'");
        if (value.size() > (name == "keytip" ? longestKeyTip : longest))
            return Wrong("'" + name + "' of " + owner + " is too long");
        if (Holds("enabled visible showLabel showImage startFromScratch", name) && !IsFlag(value))
            Wrong("'" + name + "' with value '" + Narrow(value) + "' is no flag");
        if (Holds("size itemSize", name) && value != L"normal" && value != L"large")
            Wrong("'" + name + "' with value '" + Narrow(value) + "' is no size");
        if (name == "imageMso" && !Holds(imageIds, Narrow(value))) Wrong("Unknown image: " + Narrow(value));
    }

    void CheckPairs(const XmlElement& element) {
        static constexpr std::pair<const wchar_t*, const wchar_t*> pairs[] = {
            {L"label", L"getLabel"},         {L"visible", L"getVisible"},     {L"enabled", L"getEnabled"},
            {L"image", L"getImage"},         {L"imageMso", L"getImage"},      {L"image", L"imageMso"},
            {L"size", L"getSize"},           {L"screentip", L"getScreentip"}, {L"supertip", L"getSupertip"},
            {L"keytip", L"getKeytip"},       {L"title", L"getTitle"},         {L"description", L"getDescription"},
            {L"showLabel", L"getShowLabel"}, {L"showImage", L"getShowImage"}};
        for (const auto& [one, other] : pairs)
            if (element.Find(one) && element.Find(other))
                Wrong(Narrow(one) + " and " + Narrow(other) + " of " + Narrow(element.name) + " exclude each other");
    }

    void CheckIdentity(const XmlElement& element, const Shape& shape) {
        const bool wanted = std::any_of(shape.attributes.begin(), shape.attributes.end(),
                                        [](const char* names) { return Holds(names, "id") || Holds(names, "idMso"); });
        if (!wanted) return;
        const std::wstring *own = element.Find(L"id"), *builtIn = element.Find(L"idMso"),
                           *shared = element.Find(L"idQ");
        const int given = (own ? 1 : 0) + (builtIn ? 1 : 0) + (shared ? 1 : 0);
        if (given != 1) return Wrong(Narrow(element.name) + " needs one of id, idMso and idQ");
        if (own && !IsName(*own)) Wrong("'id' with value '" + Narrow(*own) + "' is no name");
        if (own && !ids_.insert(*own).second) Wrong("the id " + Narrow(*own) + " stands twice");
        if (builtIn && !IsBuiltIn(Narrow(*builtIn))) Wrong("Unknown Office control ID: " + Narrow(*builtIn));
    }

    [[nodiscard]] bool IsBuiltIn(const std::string& name) const {
        const auto& missing = rules_.missingIds;
        if (std::find(missing.begin(), missing.end(), name) != missing.end()) return false;
        return Holds(itemIds, name) || (rules_.version >= outlook2010 && Holds(explorerIds, name));
    }

    void CheckChildren(const XmlElement& element, const Shape& shape) {
        std::size_t furthest = 0;
        std::set<std::wstring> seen;
        for (const auto& child : element.children) {
            const std::string name = Narrow(child->name);
            if (!Holds(shape.children, name)) {
                Wrong("the element " + name + " is not known in " + Narrow(element.name));
                continue;
            }
            const std::size_t place = std::string_view(shape.children).find(name);
            if (shape.ordered && (place < furthest || !seen.insert(child->name).second))
                Wrong("the element " + name + " stands in the wrong place in " + Narrow(element.name));
            furthest = std::max(furthest, place);
            CheckElement(*child, &element);
        }
        if (element.name == L"splitButton") CheckSplitButton(element);
    }

    void CheckSplitButton(const XmlElement& element) {
        const auto& parts = element.children;
        if (parts.size() != 2 || parts[1]->name != L"menu") Wrong("a splitButton has a button and a menu");
        if (!parts.empty() && (parts[0]->Find(L"visible") || parts[0]->Find(L"getVisible")))
            Wrong("the button of a splitButton has no visibility of its own");
    }

    const Rules& rules_;
    bool later_ = false;
    std::wstring space_;
    std::set<std::wstring> ids_;
    std::vector<std::string> wrong_;
};

}  // namespace

std::vector<std::string> Check(const XmlElement& root, const Rules& rules) {
    Checker checker(rules);
    checker.CheckRoot(root);
    return checker.Found();
}

}  // namespace standin::ribbon
