#include "outlook/Member.h"

#include <algorithm>

#include "outlook/Words.h"

namespace standin {

std::vector<std::string> ParameterNames(const Member& member) {
    std::vector<std::string> names;
    std::string text = member.parameters;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(',', start), text.size());
        names.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return names;
}

std::string TypeDescription::PlainName() const { return interfaceName[0] == '_' ? interfaceName + 1 : interfaceName; }

const Member* TypeDescription::Find(std::string_view name, int version) const {
    for (const Members table : tables)
        for (const Member& member : table)
            if (member.since <= version && SameName(member.name, name)) return &member;
    return nullptr;
}

const Member* TypeDescription::Find(DISPID id, WORD flags, int version) const {
    for (const Members table : tables)
        for (const Member& member : table)
            if (member.since <= version && member.id == id && (member.kinds & flags) != 0) return &member;
    return nullptr;
}

const Member* TypeDescription::Find(DISPID id, int version) const { return Find(id, 0xFFFF, version); }

}  // namespace standin
