// Window measures from the registry, and where a form's handle is published.
#include <doctest.h>
#include <windows.h>

#include <string>

#include "config/IniFile.h"
#include "shell/WindowsMiscMetrics.h"
#include "testing/ChildProcess.h"
#include "testing/PrivateRegistry.h"
#include "testing/Recorder.h"
#include "testing/TempFolder.h"

using namespace WindowsMisc;

namespace {

const std::string metricsKey = "Control Panel\\Desktop\\WindowMetrics";
const std::string addInKey = "Software\\Quillmark\\Corvella\\OlAddIn";
const std::string settingsKey = addInKey + "\\Settings";

struct Fixture {
    Fixture() {
        metricsState = {};
        IniFile::location = {folder.Path("Corvella.ini"), folder.Path("Corvella.ini"), 0};
        IniFile::IniInit(false);
    }
    ~Fixture() {
        IniFile::location = {};
        IniFile::IniInit(false);
    }
    static std::string InRegistry(const std::string& key, const std::string& name) {
        const PrivateRegistry::Value value = PrivateRegistry::Raw(HKEY_CURRENT_USER, key, name);
        return value.present ? value.bytes.c_str() : "none";
    }
    [[nodiscard]] std::string File() const { return folder.Read("Corvella.ini"); }

    PrivateRegistry registry;
    TempFolder folder;
    bool keepKey = true, settings = false;
};

// A second process of this program.
class AnotherInstance {
    TempFolder folder_;
    Recorder recorder_{folder_, own_program::Name()};
    ChildProcess process_{"\"" + folder_.Path(own_program::Name()) + "\" wait"};
};

}  // namespace

TEST_CASE("without any WindowMetrics values the caption height is -300 and the frame height -315") {
    Fixture fixture;
    metricsState.Metrics.CaptionHeight = 7;
    ReadWindowMetrics();
    const WindowMetrics& metrics = metricsState.Metrics;
    CHECK(metrics.CaptionHeight == -300);
    CHECK(metrics.FrameHeight == -315);
    CHECK(metrics.ScrollBarWidth == -240);
    CHECK(metrics.MenuHeight == -300);
    CHECK(metrics.SmallCaptionHeight == -300);
    CHECK(metrics.BorderWidth == -15);
    CHECK(metrics.BorderHeight == -15);
    CHECK(metrics.FixedWidth == 350);
}

TEST_CASE("each metric is read from its own value, and a stored 0 stays 0") {
    Fixture fixture;
    const auto put = [](const char* name, const char* text) {
        PrivateRegistry::PutText(HKEY_CURRENT_USER, metricsKey, name, text);
    };
    put("ScrollWidth", "-255");
    put("MenuHeight", "-285");
    put("CaptionHeight", "-375");
    put("SmCaptionHeight", "0");
    put("BorderWidth", "-30.5");
    ReadWindowMetrics();
    const WindowMetrics& metrics = metricsState.Metrics;
    CHECK(metrics.ScrollBarWidth == -255);
    CHECK(metrics.MenuHeight == -285);
    CHECK(metrics.CaptionHeight == -375);
    CHECK(metrics.SmallCaptionHeight == 0);
    CHECK(metrics.BorderWidth == -30.5f);
    CHECK(metrics.BorderHeight == -30.5f);
    CHECK(metrics.FrameHeight == -405.5f);
}

TEST_CASE("an empty metric is its default") {
    Fixture fixture;
    PrivateRegistry::PutText(HKEY_CURRENT_USER, metricsKey, "CaptionHeight", "");
    ReadWindowMetrics();
    CHECK(metricsState.Metrics.CaptionHeight == -300);
}

TEST_CASE("a published handle stands below the add-in's own key, and nowhere else") {
    Fixture fixture;
    PublishWindowHandle(4711, fixture.keepKey);
    CHECK(Fixture::InRegistry(addInKey, "hWnd") == "4711");
    CHECK(Fixture::InRegistry(settingsKey, "hWnd") == "none");
    CHECK(metricsState.WindowHandle == 4711);
    CHECK(fixture.File().empty());
}

TEST_CASE("publishing handle 0 deletes the hWnd value instead of writing 0") {
    Fixture fixture;
    PublishWindowHandle(4711, fixture.keepKey);
    PublishWindowHandle(0, fixture.keepKey);
    CHECK(Fixture::InRegistry(addInKey, "hWnd") == "none");
    CHECK(fixture.File().empty());
}

TEST_CASE("with RegOk false and keepKey false, an entry goes only to the settings file") {
    Fixture fixture;
    SetRegEntry("hWnd", 5, fixture.settings);
    CHECK(Fixture::InRegistry(addInKey, "hWnd") == "none");
    CHECK(Fixture::InRegistry(settingsKey, "hWnd") == "none");
    CHECK(IniFile::GetIniSetting("Misc", "hWnd") == "5");
    CHECK(IniFile::GetIniSetting("Misc", "RegOk").empty());
    CHECK(fixture.File().find("hWnd=5\r\n") != std::string::npos);
}

TEST_CASE("another entry than the handle needs RegOk, with keepKey too") {
    Fixture fixture;
    SetRegEntry("Other", 5, fixture.keepKey);
    CHECK(Fixture::InRegistry(addInKey, "Other") == "none");
    CHECK(IniFile::GetIniSetting("Misc", "Other") == "5");
}

TEST_CASE("with RegOk true an entry goes to the registry, without keepKey below Settings") {
    Fixture fixture;
    metricsState.RegOk = true;
    SetRegEntry("Other", -7, fixture.settings);
    SetRegEntry("Other", 8, fixture.keepKey);
    CHECK(Fixture::InRegistry(settingsKey, "Other") == "-7");
    CHECK(Fixture::InRegistry(addInKey, "Other") == "8");
    CHECK(fixture.File().empty());
    CHECK(metricsState.RegOk);
}

TEST_CASE("a registry that cannot be written is remembered, and the entry goes to the settings file") {
    Fixture fixture;
    metricsState.RegOk = true;
    const std::string tooLong(40000, 'n');  // for the name of a registry value
    SetRegEntry(tooLong, 9, fixture.settings);
    CHECK_FALSE(metricsState.RegOk);
    CHECK(IniFile::GetIniSetting("Misc", "RegOk") == "-1");
    CHECK(IniFile::GetIniSetting("Misc", tooLong) == "9");
}

TEST_CASE("nothing is published while another instance of the host runs") {
    Fixture fixture;
    const AnotherInstance other;
    PublishWindowHandle(4711, fixture.keepKey);
    SetRegEntry("Other", 5, fixture.settings);
    CHECK(metricsState.WindowHandle == 0);
    CHECK(Fixture::InRegistry(addInKey, "hWnd") == "none");
    CHECK(fixture.File().empty());
}
