#include <doctest.h>

#include "unit/standin_client.h"

using namespace client;

TEST_CASE("an Explorer has a menu bar of seven menus and a Standard bar of a dozen buttons") {
    const Host host;
    CHECK(Get(host.Controls("Menu Bar"), "Count").AsNumber() == 7);
    CHECK(Get(host.Controls("Standard"), "Count").AsNumber() == 12);
    const Object last = Get(host.Controls("Menu Bar"), "Item", {7}).AsObject();
    CHECK(Get(last, "Caption").AsText() == "&Help");
    CHECK(Get(last, "Type").AsNumber() == 10);
    CHECK(Get(last, "Id").AsNumber() == 30010);
}

TEST_CASE("a control is inserted before the position that Before names") {
    const Host host;
    const Object controls = host.Controls("Menu Bar");
    const Variant none = Variant::Omitted();
    const Object popup = Call(controls, "Add", {10, none, none, 7, true}).AsObject();
    REQUIRE(popup);
    CHECK(Get(popup, "Index").AsNumber() == 7);
    CHECK(Get(Get(controls, "Item", {8}).AsObject(), "Caption").AsText() == "&Help");
}

TEST_CASE("Before of one more than the count adds at the end") {
    const Host host;
    const Variant none = Variant::Omitted();
    const Object button = Call(host.Controls("Standard"), "Add", {1, none, none, 13, true}).AsObject();
    REQUIRE(button);
    CHECK(Get(button, "Index").AsNumber() == 13);
}

TEST_CASE("Before out of range is a bad index and adds nothing") {
    const Host host;
    const Object controls = host.Controls("Standard");
    const Variant none = Variant::Omitted();
    for (const int before : {0, -1, 14, 100}) {
        CAPTURE(before);
        CHECK(Call(controls, "Add", {1, none, none, before, true}).code == DISP_E_BADINDEX);
    }
    CHECK(Get(controls, "Count").AsNumber() == 12);
}

TEST_CASE("a bar of an unknown name is an invalid argument, not an empty object") {
    const Host host;
    const Object bars = Get(host.Explorer(), "CommandBars").AsObject();
    CHECK(Get(bars, "Item", {"No such bar"}).code == E_INVALIDARG);
    CHECK_FALSE(Get(bars, "Item", {"standard"}).Failed());
}
