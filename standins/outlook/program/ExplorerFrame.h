// program/ExplorerFrame.h: an Explorer: folder list, banner, item list with multiple selection, status line.
#pragma once
#include <windows.h>

#include <commctrl.h>

#include "outlook/program/HostFrame.h"

namespace program {

class ExplorerFrame : public HostFrame {
  public:
    ExplorerFrame(Desk& desk, standin::Window window, const RECT& place);
    void ShowContents() override;
    bool OnEnter(HWND control) override;            // opens what is selected
    void ChooseFolder(standin::FolderKind folder);  // as if the user chose it in the folder list
    void SelectFirst(int count);                    // as if the user selected the first rows, and no others
    [[nodiscard]] Spot SpotOfSelection() const;     // the first row that is selected; none: nothing is

  protected:
    LRESULT OnMessage(UINT message, WPARAM first, LPARAM second) override;
    void LayOut(RECT inside) override;
    void OnCommand(int, int) override {}
    LRESULT OnNotify(const NMHDR& notice) override;
    void ShowHint(const std::string& hint) override;
    [[nodiscard]] HWND FirstField() const override { return items_; }

  private:
    void MakeFolders();
    [[nodiscard]] HTREEITEM RowOf(standin::FolderKind folder) const;  // the root for a folder without a row
    void ShowFolder(standin::FolderKind folder);
    void ShowItems();
    void TakeSelection();
    void Paint();

    HWND folders_, items_, status_;
    RECT banner_{};
    std::string bannerText_;
    standin::FolderKind shown_ = standin::FolderKind::OutlookToday;
    std::vector<standin::Item> rows_;
    bool filling_ = false, columnsMade_ = false;
};

}  // namespace program
