// outlook/WindowObjects.h: Explorers and Inspectors, their collections, and the selection of an Explorer.
#pragma once
#include "outlook/Bars.h"
#include "outlook/Head.h"
#include "outlook/Items.h"
#include "outlook/Store.h"

namespace standin {

class WindowObject : public OutlookObject {
  public:
    WindowObject(std::shared_ptr<Gate> gate, int number);

    [[nodiscard]] HRESULT Gone() const override { return gone ? RPC_E_DISCONNECTED : S_OK; }
    [[nodiscard]] bool HasFrame() const override { return true; }
    [[nodiscard]] HWND Frame() const override { return frame; }
    Result ParentObject() override { return GetApplication(); }
    [[nodiscard]] virtual bool IsExplorer() const = 0;
    [[nodiscard]] int Number() const { return number_; }
    [[nodiscard]] virtual std::wstring GetCaption() = 0;

    HWND frame = nullptr;
    bool shown = false, closing = false, gone = false;
    BarSet bars;
    Result commandBars;  // made when first asked for

    // Members
    Result GetCommandBars();
    void CallActivate();
    long GetLeft() { return left_; }
    void PutLeft(long value) { left_ = value; }
    long GetTop() { return top_; }
    void PutTop(long value) { top_ = value; }
    long GetWidth() { return width_; }
    void PutWidth(long value) { width_ = value; }
    long GetHeight() { return height_; }
    void PutHeight(long value) { height_ = value; }
    long GetState() { return state_; }
    void PutState(long value);

  private:
    int number_;
    long left_ = 100, top_ = 100, width_ = 800, height_ = 600, state_ = 2;
};

class ExplorerObject : public WindowObject {
  public:
    ExplorerObject(std::shared_ptr<Gate> gate, int number, FolderObject* start);

    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override { return "Explorer " + std::to_string(Number()); }
    [[nodiscard]] long ClassNumber() const override { return ClassExplorer; }
    [[nodiscard]] bool IsExplorer() const override { return true; }

    Ref<FolderObject> folder;
    std::vector<Ref<ItemObject>> selection;
    bool AskFolderSwitch(FolderObject* next);  // false: cancelled
    void SelectFirst();

    Result GetFolder() { return folder; }
    void PutFolder(IDispatch* next);
    void CallClose();
    void CallDisplay();
    std::wstring GetCaption() override;
    Result GetSelection();
    Value GetView() { return Value::OfText(L"Normal"); }
    bool CallIsPaneVisible(Call& call);
    void CallShowPane(Call& call);

  private:
    bool panes_[3] = {true, true, false};
};

class InspectorObject : public WindowObject {
  public:
    InspectorObject(std::shared_ptr<Gate> gate, int number, ItemObject* shownItem);

    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override { return "Inspector " + std::to_string(Number()); }
    [[nodiscard]] long ClassNumber() const override { return ClassInspector; }
    [[nodiscard]] bool IsExplorer() const override { return false; }

    Ref<ItemObject> item;
    bool sentInOld = false;  // its mail was sent in a version that raises no Close then

    Result GetItem() { return item; }
    long GetEditorType() { return 3; }  // olEditorRTF
    void CallClose(Call& call);
    void CallDisplay(Call& call);
    bool CallIsWordMail() { return false; }
    std::wstring GetCaption() override;
};

class WindowsObject : public OutlookObject {
  public:
    using OutlookObject::OutlookObject;
    Result ParentObject() override { return GetApplication(); }
    long GetCount();
    Result CallItem(Call& call);

  private:
    [[nodiscard]] std::vector<WindowObject*> Listed() const;
    [[nodiscard]] virtual bool OfExplorers() const = 0;
};

class ExplorersObject : public WindowsObject {
  public:
    using WindowsObject::WindowsObject;
    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override { return "Explorers"; }
    [[nodiscard]] long ClassNumber() const override { return ClassExplorers; }
    Result CallAdd(Call& call);

  private:
    [[nodiscard]] bool OfExplorers() const override { return true; }
};

class InspectorsObject : public WindowsObject {
  public:
    using WindowsObject::WindowsObject;
    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override { return "Inspectors"; }
    [[nodiscard]] long ClassNumber() const override { return ClassInspectors; }
    Result CallAdd(Call& call);

  private:
    [[nodiscard]] bool OfExplorers() const override { return false; }
};

// What was selected when it was asked for.
class SelectionObject : public OutlookObject {
  public:
    explicit SelectionObject(ExplorerObject& explorer);
    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override { return "Selection of " + explorer_->Name(); }
    [[nodiscard]] long ClassNumber() const override { return ClassSelection; }
    Result ParentObject() override { return explorer_; }
    long GetCount() { return static_cast<long>(items_.size()); }
    Result CallItem(Call& call);

  private:
    Ref<ExplorerObject> explorer_;
    std::vector<Ref<ItemObject>> items_;
};

namespace events {

inline constexpr Event Activate{"Activate", 0xF001}, FolderSwitch{"FolderSwitch", 0xF002},
    BeforeFolderSwitch{"BeforeFolderSwitch", 0xF003}, Deactivate{"Deactivate", 0xF006},
    SelectionChange{"SelectionChange", 0xF007}, Close{"Close", 0xF008}, NewExplorer{"NewExplorer", 0xF001},
    NewInspector{"NewInspector", 0xF001}, Startup{"Startup", 0xF006}, Quit{"Quit", 0xF007},
    LogonComplete{"MAPILogonComplete", 0xFA90, 1}, Click{"Click", 1}, OnUpdate{"OnUpdate", 1};

}  // namespace events

}  // namespace standin
