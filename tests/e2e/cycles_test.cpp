// A long day: nothing grows with the number of connections or windows.
#include <doctest.h>

#include "e2e/Session.h"
#include "support/HandleCount.h"

using e2e::Session;

namespace {

struct Held {
    std::uint32_t gdi = 0;
    std::uint32_t user = 0;
    std::uint32_t kernel = 0;
    int references = 0;
    int advises = 0;
};

Held HeldNow(Session& session) {
    e2e::Pump(0);
    return {handles::GdiObjects(), handles::UserObjects(), handles::KernelHandles(), session->References(),
            session->Advises()};
}

void CheckNotMore(const Held& now, const Held& before) {
    CHECK(now.gdi <= before.gdi);
    CHECK(now.user <= before.user);
    CHECK(now.kernel <= before.kernel);
    CHECK(now.references <= before.references);
    CHECK(now.advises <= before.advises);
}

constexpr int rounds = 1000;
constexpr int settled = 10;
// Pasted faces and faces given as pictures take different ways.
constexpr int versions[] = {10, 11};

}  // namespace

TEST_CASE("a thousand connections leave no more held than the tenth") {
    for (const int version : versions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        Held before;
        for (int round = 1; round <= rounds; ++round) {
            REQUIRE(session->UnloadAddIn(e2e::progId));
            REQUIRE(session->LoadAddIn(e2e::progId));
            if (round == settled) before = HeldNow(session);
        }
        CheckNotMore(HeldNow(session), before);
    }
}
TEST_CASE("a thousand item windows leave no more held than the tenth") {
    for (const int version : versions) {
        CAPTURE(version);
        Session session({.version = version});
        session->Start();
        const standin::Item contact = session->AddItem(standin::FolderKind::Contacts, {{"FullName", "Ann"}});
        Held before;
        for (int round = 1; round <= rounds; ++round) {
            session->CloseWindow(session->OpenInspector(contact));
            if (round == settled) before = HeldNow(session);
        }
        CheckNotMore(HeldNow(session), before);
    }
}
