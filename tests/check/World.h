// A machine with an Outlook, the add-in and Corvella, in the real registry of a Wine prefix that nobody else uses. Each one
// begins healthy; tests break one thing and let the real CorvellaCheck.exe look at it.
#pragma once
#include <windows.h>

#include <map>
#include <string>

namespace check_test {

inline const std::string addIns = "Software\\Microsoft\\Office\\Outlook\\Addins\\CVOutlookAddIn.Connect";
inline const std::string classId = "{6B0C1E52-3D8F-4C0A-9A5E-7F21C7B4D913}";
inline const std::string classKey = "Software\\Classes\\CLSID\\" + classId + "\\InprocServer32";
inline const std::string nameKey = "Software\\Classes\\CVOutlookAddIn.Connect";
inline const std::string product = "Software\\Quillmark\\Corvella";
inline const std::string addInKey = product + "\\OlAddIn";

void Put(HKEY root, const std::string& key, const std::string& name, DWORD type, const std::string& bytes);
void PutText(HKEY root, const std::string& key, const std::string& name, const std::string& text);
void PutNumber(HKEY root, const std::string& key, const std::string& name, DWORD number);
void RemoveValue(HKEY root, const std::string& key, const std::string& name);
void RemoveTree(HKEY root, const std::string& key, REGSAM view = 0);

class World {
  public:
    enum class For { User, AllUsers };
    explicit World(int version = 11, For scope = For::User, int bits = 32);
    ~World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    [[nodiscard]] std::string Path(const std::string& name) const;
    void Write(const std::string& name, const std::string& bytes) const;
    [[nodiscard]] std::string Read(const std::string& name) const;

    // The keys of what the program finds that is not fine, separated by blanks; its exit code before them.
    std::string Check();
    std::string Report() const { return Read("report.txt"); }
    // The exit code.
    int Repair(const std::string& more = {});
    int Run(const std::string& arguments);

    // Outlook starts, shows its first window, and ends. What it wrote about the add-in is taken back.
    bool ShowsMenu();
    bool ShowsButton();  // of the toolbar

    [[nodiscard]] HKEY Root() const { return scope_ == For::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE; }
    [[nodiscard]] std::string Resiliency(const std::string& list) const;
    void Disable(DWORD kind, const std::string& list = "DisabledItems") const;

    // Everything that the program could have changed: values with their types and bytes, and files with size and time.
    [[nodiscard]] static std::map<std::string, std::string> Registry();
    [[nodiscard]] std::map<std::string, std::string> Files() const;

  private:
    void MakeFiles() const;
    void Register() const;
    bool Shows(bool button);

    int version_, bits_;
    For scope_;
    std::string folder_;
};

}  // namespace check_test
