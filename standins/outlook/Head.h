// outlook/Head.h: the members that every object of the Outlook library begins with.
#pragma once
#include "outlook/Handlers.h"
#include "outlook/Object.h"

namespace standin {

class OutlookObject : public Object {
  public:
    using Object::Object;
    [[nodiscard]] virtual long ClassNumber() const = 0;  // OlObjectClass
    virtual Result ParentObject() = 0;
};

// OlObjectClass of what is no item.
enum ClassNumber {
    ClassApplication = 0,
    ClassNameSpace = 1,
    ClassFolder = 2,
    ClassFolders = 15,
    ClassItems = 16,
    ClassExplorer = 34,
    ClassInspector = 35,
    ClassExplorers = 60,
    ClassInspectors = 61,
    ClassSelection = 74
};

inline constexpr Member headMembers[] = {
    Get<&OutlookObject::GetApplication>("Application", 0xF000),
    Get<&OutlookObject::ClassNumber>("Class", 0xF00A),
    Get<&OutlookObject::GetSession>("Session", 0xF00B),
    Get<&OutlookObject::ParentObject>("Parent", 0xF001),
};

// The number from 1 to `count` that a VARIANT index means; Outlook's own refusal for any other.
long IndexArgument(const Call& call, std::size_t count);

}  // namespace standin
