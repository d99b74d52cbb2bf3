// outlook/ApplicationObjects.h: Application and NameSpace.
#pragma once
#include "outlook/Head.h"

namespace standin {

class ApplicationObject : public OutlookObject {
  public:
    using OutlookObject::OutlookObject;
    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override { return "Application"; }
    [[nodiscard]] long ClassNumber() const override { return ClassApplication; }
    Result ParentObject() override { return {}; }

    std::wstring GetName() { return L"Outlook"; }
    std::wstring GetVersion();
    Result CallActiveExplorer();
    Result CallActiveInspector();
    Result CallActiveWindow();
    Result CallCreateItem(Call& call);
    Result CallGetNamespace(Call& call);
    void CallQuit();
    Result GetAddIns();
    Result GetExplorers();
    Result GetInspectors();
};

class NameSpaceObject : public OutlookObject {
  public:
    using OutlookObject::OutlookObject;
    [[nodiscard]] const TypeDescription& Type() const override;
    [[nodiscard]] std::string Name() const override { return "NameSpace"; }
    [[nodiscard]] long ClassNumber() const override { return ClassNameSpace; }
    Result ParentObject() override { return GetApplication(); }

    std::wstring GetKind() { return L"MAPI"; }
    Result CallGetDefaultFolder(Call& call);
    Result CallGetItemFromId(Call& call);
};

}  // namespace standin
