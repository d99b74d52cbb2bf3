// A machine on which everything is as it should be, for tests that break one thing of it.
#pragma once
#include <string>

#include "check/Judge.h"
#include "check/Resiliency.h"
#include "platform/Text.h"
#include "support/AddInNames.h"

namespace check_test {

using namespace Check;

inline const std::string library32 = "C:\\Corvella for Outlook\\CVOutlookAddIn.dll";
inline const std::string library64 = "C:\\Corvella for Outlook\\x64\\CVOutlookAddIn.dll";

inline Value Text(const std::string& text) { return {Found::There, platform::RegistryText, text + '\0'}; }
inline Value Number(std::uint32_t number) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) bytes.push_back(static_cast<char>(number >> shift & 0xFF));
    return {Found::There, platform::RegistryNumber, bytes};
}
inline Value Unreadable() { return {Found::Unreadable, 0, {}}; }

inline void PutFile(Snapshot& snapshot, const std::string& path, int bits = 32, bool isLibrary = false) {
    Program program;
    program.found = Found::There;
    program.bits = bits;
    program.isLibrary = isLibrary;
    program.version = "2.0.0.0";
    snapshot.FileToFill(path) = program;
}

inline std::u16string Wide(const std::string& text) { return {text.begin(), text.end()}; }

inline Snapshot Healthy(int version = 11, Scope scope = Scope::User, int bits = 32) {
    Snapshot snapshot;
    snapshot.ownFolder = "C:\\Corvella for Outlook\\";
    snapshot.ownVersion = "2.0.0.0";
    snapshot.has64Bits = true;
    snapshot.outlooks.push_back({version, bits, 0, "C:\\Office\\OUTLOOK.EXE", false});
    PutFile(snapshot, "C:\\Office\\OUTLOOK.EXE", bits);
    for (const Scope each : {Scope::User, Scope::Machine}) {
        for (const int view : {32, 64}) {
            const std::string& path = view == 64 ? library64 : library32;
            PutFile(snapshot, path, view, true);
            snapshot.lowerPaths.push_back(Wide(platform::ToLower(path)));
            if (each == scope) snapshot.classes.push_back({each, view, Text(path), path});
        }
        snapshot.names.push_back({each, each == scope ? Text(AddInNames::ClassId) : Value()});
    }
    snapshot.entries.push_back({scope, scope == Scope::User ? 0 : bits, false, Found::There, Number(3)});
    for (const int each : {10, 11, 12, 14, 15, 16}) {
        VersionFacts facts;
        facts.version = each;
        snapshot.versions.push_back(facts);
    }
    snapshot.userPath = Text("C:\\Corvella");
    PutFile(snapshot, "C:\\Corvella\\Corvella.exe");
    snapshot.language = {"English", "C:\\x\\English.lng", "C:\\x\\English.lng", Found::There, Found::There, 0, {}, 0,
                         1252};
    snapshot.settings.folderTakesFiles = true;
    return snapshot;
}

// The keys of all that is not fine, separated by blanks.
inline std::string Troubles(const Snapshot& snapshot) {
    std::string keys;
    for (const Finding& finding : Judge(snapshot)) {
        if (finding.sign != Sign::Fine) keys += (keys.empty() ? "" : " ") + std::string(finding.key);
    }
    return keys;
}

// Of the first finding that is not fine.
inline Finding Trouble(const Snapshot& snapshot) {
    for (const Finding& finding : Judge(snapshot)) {
        if (finding.sign != Sign::Fine) return finding;
    }
    return {};
}

}  // namespace check_test
