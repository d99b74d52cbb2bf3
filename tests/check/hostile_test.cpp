// A registry in which nothing is as it should be: the program ends in order and writes its report.
#include <doctest.h>

#include <random>
#include <vector>

#include "World.h"

using namespace check_test;

namespace {

struct Place {
    HKEY root;
    std::string key, name;
};

std::vector<Place> Places(const World& world) {
    std::vector<Place> places{{HKEY_LOCAL_MACHINE, "Software\\Microsoft\\Office\\16.0\\Outlook\\InstallRoot", "Path"},
                              {HKEY_LOCAL_MACHINE, "Software\\Microsoft\\Office\\16.0\\Outlook", "Bitness"},
                              {HKEY_LOCAL_MACHINE, "Software\\Classes\\Outlook.Application\\CurVer", ""},
                              {HKEY_CURRENT_USER, classKey, ""},
                              {HKEY_LOCAL_MACHINE, classKey, ""},
                              {HKEY_CURRENT_USER, nameKey + "\\CLSID", ""},
                              {HKEY_CURRENT_USER, addIns, "LoadBehavior"},
                              {HKEY_LOCAL_MACHINE, addIns, "LoadBehavior"},
                              {HKEY_CURRENT_USER, product, "Path"},
                              {HKEY_LOCAL_MACHINE, product, "Path"},
                              {HKEY_CURRENT_USER, product, "IniFiles"},
                              {HKEY_CURRENT_USER, product + "\\Settings", "SaveIn"},
                              {HKEY_CURRENT_USER, addInKey, "Active"},
                              {HKEY_CURRENT_USER, addInKey, "DebugMode"}};
    for (const char* name : {"ChangedA", "ChangedC", "ChangedT"}) {
        places.push_back({HKEY_CURRENT_USER, product + "\\Outlook", name});
    }
    for (const char* list : {"DisabledItems", "StartupItems", "CrashingAddinList", "AddinList"}) {
        places.push_back({HKEY_CURRENT_USER, world.Resiliency(list), "CVOutlookAddIn.Connect"});
        places.push_back({HKEY_CURRENT_USER, world.Resiliency(list), "12EF23A9"});
    }
    for (const char* number : {"101", "103", "107"}) {
        for (const char* word : {"Bar", "Pos", "Style"}) {
            places.push_back({HKEY_CURRENT_USER, addInKey, std::string(number) + word});
        }
    }
    return places;
}

std::string Noise(std::mt19937& random, std::size_t length) {
    std::string bytes(length, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    return bytes;
}

void Spoil(const Place& place, std::mt19937& random) {
    constexpr DWORD types[] = {REG_NONE, REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_MULTI_SZ, REG_QWORD, 77};
    const DWORD type = types[random() % std::size(types)];
    const std::size_t lengths[] = {0, 1, 3, 4, 5, 12, 100, 5000};
    Put(place.root, place.key, place.name, type, Noise(random, lengths[random() % std::size(lengths)]));
}

bool IsWhole(const std::string& report) {
    return report.starts_with("Corvella for Outlook ") && report.find("[Placement") != std::string::npos &&
           report.ends_with(".\r\n");
}

}  // namespace

TEST_CASE("noise of any type and length in every value never ends the program early") {
    std::mt19937 random(20261122);
    for (int round = 0; round < 12; ++round) {
        World world(16);
        for (const Place& place : Places(world)) {
            if (random() % 3 != 0) Spoil(place, random);
        }
        CAPTURE(round);
        const std::string found = world.Check();
        CHECK((found[0] == '0' || found[0] == '1' || found[0] == '2'));
        CHECK(IsWhole(world.Report()));
    }
}

TEST_CASE("values of a megabyte are read as far as they are of use, and left alone") {
    World world(16);
    const std::string huge(1 << 20, 'x');
    for (const Place& place : Places(world)) Put(place.root, place.key, place.name, REG_BINARY, huge);
    const auto before = World::Registry();
    world.Check();
    CHECK(IsWhole(world.Report()));
    CHECK(World::Registry() == before);
}

TEST_CASE("repairing a hostile registry leaves whole what it cannot read") {
    World world(16);
    std::string bytes(1 << 20, 'x');
    Put(HKEY_CURRENT_USER, addIns, "LoadBehavior", REG_BINARY, bytes);
    world.Repair();
    CHECK(World::Registry().at(addIns + "\\\\LoadBehavior") == std::to_string(REG_BINARY) + ":" + bytes);
}

TEST_CASE("three hundred disabled items of others do not hide ours, nor are they touched") {
    World world(16);
    std::mt19937 random(1);
    for (int i = 0; i < 300; ++i) {
        Put(HKEY_CURRENT_USER, world.Resiliency("DisabledItems"), "Noise" + std::to_string(i), REG_BINARY,
            Noise(random, 40));
    }
    world.Disable(1);
    CHECK(world.Check() == "2 DisabledCrash");
    CHECK(world.Repair() == 0);
    CHECK(World::Registry().contains(world.Resiliency("DisabledItems") + "\\\\Noise299"));
}
