// outlook/Member.h: the tables that say what an object has: names, dispids, kinds, parameters, since which version.
//
// Shapes  `parameters` are names separated by ","; one that may be omitted ends in "?". A put has one value.
#pragma once
#include <windows.h>

#include <oaidl.h>

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace standin {

class Call;
class Object;

struct Member {
    const char* name;
    DISPID id;
    WORD kinds;  // DISPATCH_METHOD, _PROPERTYGET, _PROPERTYPUT, _PROPERTYPUTREF
    void (*handler)(Object&, Call&);
    const char* parameters = "";
    int since = 9;
};

using Members = std::span<const Member>;

// {"Type?", "Id?"} of "Type?,Id?".
[[nodiscard]] std::vector<std::string> ParameterNames(const Member& member);

struct Event {
    const char* name;
    DISPID id;
    int level = 0;  // raised at the event sets of this level and above
};

struct EventSet {
    const char* name;
    GUID diid;
    int since = 9;
    int level = 0;  // 0 the first set, 1 its `_10`, 2 its `_11`
};

// What one kind of object is to the outside.
struct TypeDescription {
    const char* interfaceName;  // "_Explorer", as type information calls it
    GUID iid;
    std::vector<Members> tables;
    std::span<const EventSet> events = {};

    [[nodiscard]] std::string PlainName() const;                                 // without "_"
    [[nodiscard]] const Member* Find(std::string_view name, int version) const;  // any kind
    [[nodiscard]] const Member* Find(DISPID id, WORD flags, int version) const;
    [[nodiscard]] const Member* Find(DISPID id, int version) const;
};

// {xxxxxxxx-0000-0000-C000-000000000046}
constexpr GUID OfficeGuid(unsigned long first) { return {first, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}}; }

}  // namespace standin
