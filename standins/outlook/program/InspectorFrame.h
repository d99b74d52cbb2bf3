// program/InspectorFrame.h: an Inspector: the fields of its item, which change the item as they are edited.
#pragma once
#include "outlook/program/HostFrame.h"

namespace program {

class InspectorFrame : public HostFrame {
  public:
    InspectorFrame(Desk& desk, standin::Window window, const RECT& place);
    void ShowContents() override;
    void CommitEdits() override;
    bool AskClose() override;
    // As if the user typed into the field of that name; false when the form has none.
    bool Type(const std::string& field, const std::string& text);

  protected:
    void LayOut(RECT inside) override;
    void OnCommand(int id, int code) override;
    [[nodiscard]] HWND FirstField() const override { return entries_.front().edit; }

  private:
    struct Entry {
        std::string field;
        HWND label, edit;
        bool half;
    };
    void Commit(const Entry& entry);

    standin::Item item_;
    std::vector<Entry> entries_;
    HWND body_;
    bool showing_ = false;
};

}  // namespace program
