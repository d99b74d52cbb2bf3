// check/Keys.h: the keys of Outlook and Windows that the checks look at, below their roots.
#pragma once
#include <string>
#include <string_view>

#include "platform/Text.h"
#include "support/AddInNames.h"

namespace Check::Keys {

inline const std::string Classes = "Software\\Classes\\";
inline const std::string Class = Classes + "CLSID\\" + AddInNames::ClassId;
inline const std::string Library = Class + "\\InprocServer32";
inline const std::string Name = Classes + AddInNames::ProgId;
inline const std::string NameToClass = Name + "\\CLSID";

inline const std::string Office = "Software\\Microsoft\\Office\\";
inline const std::string AddIn = Office + "Outlook\\Addins\\" + AddInNames::ProgId;
inline const std::string Policies = "Software\\Policies\\Microsoft\\Office\\";

// "11.0"
[[nodiscard]] inline std::string VersionName(int version) { return platform::Decimal(version) + ".0"; }
// Of a version, below either of Office's branches.
[[nodiscard]] inline std::string OfVersion(const std::string& branch, int version, std::string_view rest) {
    return branch + VersionName(version) + "\\Outlook\\" + std::string(rest);
}
[[nodiscard]] inline std::string Resiliency(int version, std::string_view list) {
    return OfVersion(Office, version, "Resiliency\\" + std::string(list));
}

}  // namespace Check::Keys
