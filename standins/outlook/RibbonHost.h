// outlook/RibbonHost.h: the ribbons of one session: asks each loaded add-in for its XML once for each kind of
// ribbon, takes or refuses it as a whole, asks the callbacks and keeps what they told until it is invalidated.
//
// Errors  An add-in that offers no ribbon is left alone. Failing calls out, callbacks that are not there and results of
//         another type are complaints; a control then shows its default. What Office refuses in an XML is in Errors().
#pragma once
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "outlook/Host.h"
#include "outlook/RibbonObjects.h"
#include "outlook/ribbon/RibbonView.h"
#include "outlook/ribbon/Xml.h"

namespace standin {

class WindowObject;

// The control with that id, in all groups and menus of the tabs; the empty view when none.
[[nodiscard]] RibbonControlView FindControl(const std::vector<RibbonTabView>& tabs, const std::string& id);

struct RibbonExtensibility : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE GetCustomUI(BSTR ribbonId, BSTR* xml) = 0;
};

class RibbonHost {
  public:
    RibbonHost(Host& host, std::shared_ptr<Gate> gate) : host_(host), gate_(std::move(gate)) {}

    // An add-in was connected. `late`: after the start, so its ribbons of the open windows are asked for at once.
    void Add(const std::string& progId, IUnknown* addIn, bool late);
    void Remove(const std::string& progId);
    void RemoveAll();
    void AskForExplorer();
    void WindowShows(WindowObject& window);  // a window is about to be shown
    void WindowGone(int window);

    [[nodiscard]] std::vector<RibbonTabView> Tabs(WindowObject& window);
    [[nodiscard]] std::vector<RibbonControlView> ContextMenu(WindowObject& explorer);
    bool Click(WindowObject& window, const std::wstring& id);
    bool ClickInContextMenu(WindowObject& explorer, const std::wstring& id);

    // GetCustomUI once more, for any ribbon id, without any consequence.
    [[nodiscard]] std::wstring AskAgain(const std::string& progId, const std::string& ribbonId);
    // What callbacks are called on; null where that add-in has none. Borrowed.
    [[nodiscard]] IDispatch* CallbacksOf(const std::string& progId) const;
    [[nodiscard]] const std::vector<std::string>& Asked() const { return asked_; }
    [[nodiscard]] const std::vector<std::string>& Errors() const { return errors_; }

  private:
    // One XML that was taken.
    struct Custom {
        std::string ribbonId;
        std::shared_ptr<ribbon::XmlElement> root;
        Ref<RibbonUiObject> ui;
    };
    struct Part {  // of an add-in
        std::string progId;
        Theirs<RibbonExtensibility> extensibility;
        Theirs<IDispatch> callbacks;
        std::map<std::string, std::shared_ptr<Custom>> customs;  // by ribbon id; null: refused, or nothing given
        std::map<std::wstring, DISPID> ids;                      // of callbacks that were called
    };
    using PartPointer = std::shared_ptr<Part>;
    // Where controls are shown: the window, and what its controls' Context is.
    struct Scene {
        int window = 0;
        Result context;
        bool remembers = true;  // a context menu asks anew at each opening
    };
    struct Known {  // what a callback told, by window, control and attribute
        int window;
        std::wstring control, attribute;
        auto operator<=>(const Known&) const = default;
    };

    void Ask(Part& part, const std::string& ribbonId);
    [[nodiscard]] std::wstring GetCustomUI(Part& part, const std::string& ribbonId);
    [[nodiscard]] std::shared_ptr<Custom> Take(Part& part, const std::string& ribbonId, const std::wstring& xml);
    [[nodiscard]] std::string RibbonOf(const WindowObject& window) const;
    void Forget(const std::string& progId, const std::wstring& id);

    [[nodiscard]] Scene SceneOf(WindowObject& window);
    [[nodiscard]] Scene SelectionScene(WindowObject& explorer);
    [[nodiscard]] Result ContextOr(const Result& documented);
    bool Call(Part& part, const std::wstring& name, std::vector<VARIANT> reversed, const std::string& about,
              Value* result);
    bool FindId(Part& part, const std::wstring& name, DISPID& id);
    [[nodiscard]] Value Told(Part& part, const Scene& scene, const ribbon::XmlElement& element,
                             const std::wstring& attribute);
    [[nodiscard]] std::string TextOf(Part& part, const Scene& scene, const ribbon::XmlElement& element,
                                     const wchar_t* attribute);
    [[nodiscard]] bool FlagOf(Part& part, const Scene& scene, const ribbon::XmlElement& element,
                              const wchar_t* attribute);
    [[nodiscard]] bool IsLarge(Part& part, const Scene& scene, const ribbon::XmlElement& element);
    [[nodiscard]] AlphaPixels ImageOf(Part& part, const Scene& scene, const ribbon::XmlElement& element);
    [[nodiscard]] RibbonControlView ViewOf(Part& part, const Scene& scene, const ribbon::XmlElement& element);
    void AddGroups(Part& part, const Scene& scene, const ribbon::XmlElement& tab, RibbonTabView& view);
    bool ClickIn(const ribbon::XmlElement& element, Part& part, const Scene& scene, const std::wstring& id);
    bool ClickControl(const ribbon::XmlElement& element, Part& part, const Scene& scene);

    Host& host_;
    std::shared_ptr<Gate> gate_;
    std::vector<PartPointer> parts_;
    std::map<std::pair<std::string, Known>, Value> told_;
    std::vector<std::string> asked_, errors_;
    LCID locale_ = 0x0400;
    int calls_ = 0;
};

}  // namespace standin
