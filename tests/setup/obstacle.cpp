// What stands in the way of a setup, for its tests:
//   obstacle lock <file>   holds the file so that it can be neither renamed nor deleted, until it is ended
//   obstacle deny <key>    lets nobody write into this key of HKEY_CURRENT_USER any more
// "ready" is written once that is so.
#include <aclapi.h>
#include <windows.h>

#include <cstdio>
#include <string>

namespace {

bool Lock(const char* path) {
    return CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr) != INVALID_HANDLE_VALUE;
}

bool Deny(const char* path) {
    HKEY key = nullptr;
    if (RegCreateKeyExA(HKEY_CURRENT_USER, path, 0, nullptr, 0, WRITE_DAC, nullptr, &key, nullptr) != ERROR_SUCCESS)
        return false;
    alignas(ACL) char room[256];
    const auto rights = reinterpret_cast<ACL*>(room);
    SID_IDENTIFIER_AUTHORITY world = SECURITY_WORLD_SID_AUTHORITY;
    PSID everyone = nullptr;
    SECURITY_DESCRIPTOR descriptor{};
    return AllocateAndInitializeSid(&world, 1, SECURITY_WORLD_RID, 0, 0, 0, 0, 0, 0, 0, &everyone) &&
           InitializeAcl(rights, sizeof room, ACL_REVISION) &&
           AddAccessAllowedAce(rights, ACL_REVISION, KEY_READ, everyone) &&
           InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION) &&
           SetSecurityDescriptorDacl(&descriptor, TRUE, rights, FALSE) &&
           RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, &descriptor) == ERROR_SUCCESS;
}

}  // namespace

int main(int count, char** arguments) {
    const std::string what = count == 3 ? arguments[1] : "";
    const bool locks = what == "lock";
    if (!(locks ? Lock(arguments[2]) : what == "deny" && Deny(arguments[2]))) return 1;
    std::puts("ready");
    std::fflush(stdout);
    if (locks) Sleep(INFINITE);
}
