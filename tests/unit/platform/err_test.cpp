#include <doctest.h>

#include <stdexcept>

#include "platform/Err.h"
#include "platform/Guard.h"

using platform::Err;

TEST_CASE("the last failure is the one that is pending") {
    Err().Set(5, "first");
    Err().Set(76, "second");
    CHECK(Err().Number() == 76);
    CHECK(Err().Description() == "second");
    Err().Clear();
}

TEST_CASE("clearing leaves neither number nor description") {
    Err().Set(5, "something");
    Err().Clear();
    CHECK(Err().Number() == 0);
    CHECK(Err().Description().empty());
    CHECK_FALSE(Err());
}

TEST_CASE("a scope begins with no error pending and puts the earlier one back whatever failed in it") {
    Err().Set(9, "earlier");
    {
        const platform::ErrorScope scope;
        CHECK_FALSE(Err());
        Err().Set(13, "inside");
    }
    CHECK(Err().Number() == 9);
    CHECK(Err().Description() == "earlier");
    Err().Clear();
}

TEST_CASE("a guarded call begins with no error pending") {
    Err().Set(9, "of an earlier event");
    std::int32_t seen = -1;
    platform::RunGuarded([&] { seen = Err().Number(); });
    CHECK(seen == 0);
}

TEST_CASE("what a guarded call throws goes no further and is pending afterwards") {
    platform::RunGuarded([] { throw std::runtime_error("broken"); });
    CHECK(Err().Number() == platform::InvalidProcedureCall);
    CHECK(Err().Description() == "broken");
    platform::RunGuarded([] { throw 5; });
    CHECK(Err().Number() == platform::InvalidProcedureCall);
    platform::RunGuarded([] { throw std::bad_alloc(); });
    CHECK(Err().Number() == platform::OutOfMemory);
    Err().Clear();
}
