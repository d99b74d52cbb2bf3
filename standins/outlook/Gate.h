// outlook/Gate.h: the one way in. Counts the calls of the outside, makes some fail, writes the transcript and keeps
// the ledger of what the outside holds. It outlives its session for as long as an object is held.
#pragma once
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "outlook/Pointers.h"
#include "outlook/Terms.h"

namespace standin {

class Host;
class Gate;

// Something that the outside can hold a reference to: counted apart from the references of the stand-in itself.
class Counted {
  public:
    explicit Counted(std::shared_ptr<Gate> gate);
    virtual ~Counted();
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;

    [[nodiscard]] virtual std::string Name() const = 0;  // as transcript and ledger call it
    void Hold() { ++inside_; }
    void Drop() {
        --inside_;
        DestroyWhenFree();
    }
    unsigned long AddOutside();
    unsigned long ReleaseOutside();
    [[nodiscard]] unsigned long Outside() const { return outside_; }
    [[nodiscard]] Gate& TheGate() const { return *gate_; }
    [[nodiscard]] const std::shared_ptr<Gate>& SharedGate() const { return gate_; }

  protected:
    virtual void FirstOutside() {}
    virtual void LastOutside() {}

  private:
    void DestroyWhenFree();

    std::shared_ptr<Gate> gate_;
    unsigned long inside_ = 0, outside_ = 0;
    unsigned long serial_ = 0;
};

// One call on its way through the gate. The texts are asked for only when somebody reads them.
struct Visit {
    std::function<std::string()> member;   // "CommandBarControls.Add", for FailMember
    std::function<std::string()> request;  // the line up to the answer
    std::function<std::string()> result;   // " -> ..." of a success, or ""
    std::function<HRESULT()> work;
    std::function<HRESULT(const Fault&)> spoil;  // what a fault makes of it
    bool detail = false;                         // a line only with Detail::Everything, unless it fails
};

class Gate {
  public:
    Gate(Host* host, int version) : host_(host), version_(version) {}

    [[nodiscard]] Host& TheHost() const { return *host_; }
    [[nodiscard]] int Version() const { return version_; }
    // What every call returns once the session is over; S_OK while it runs.
    [[nodiscard]] HRESULT Over() const { return over_; }
    void End(HRESULT answer) { over_ = answer; }
    void Forget() { host_ = nullptr; }

    HRESULT Pass(const Visit& visit);

    bool failuresAsExceptions = false;
    DWORD nextCookie = 1;
    int calls = 0;
    int faultsHit = 0;
    std::map<int, Fault> faultsByNumber;
    struct MemberFault {
        Fault fault;
        int times;
    };
    std::map<std::string, MemberFault> faultsByMember;

    [[nodiscard]] std::vector<const Counted*> Held() const;  // oldest first
    [[nodiscard]] const std::map<unsigned long, Counted*>& Objects() const { return objects_; }

    void Record(Detail detail) {
        recording_ = true;
        detail_ = detail;
    }
    [[nodiscard]] bool Recording() const { return recording_; }
    void Action(const std::string& text) { Write("# " + text); }
    // An add-in is at work just now: a call out or in has not returned.
    [[nodiscard]] bool Inside() const { return depth_ > 0; }
    std::function<void()> onReturn;  // a call in has returned, perhaps from inside another
    // A call out, with the calls that it causes indented below it.
    class Outward {
      public:
        Outward(Gate& gate, const std::function<std::string()>& text);
        ~Outward() { --gate_.depth_; }
        Outward(const Outward&) = delete;
        Outward& operator=(const Outward&) = delete;

      private:
        Gate& gate_;
    };
    void Complain(const std::string& text);
    std::vector<std::string> lines, complaints;
    std::function<void()> onLine;

  private:
    friend class Counted;
    void Write(const std::string& text);
    const Fault* FaultFor(const Visit& visit);
    Fault hit_;

    Host* host_;
    int version_;
    HRESULT over_ = S_OK;
    std::map<unsigned long, Counted*> objects_;
    unsigned long nextSerial_ = 1;
    bool recording_ = false;
    Detail detail_ = Detail::Calls;
    int depth_ = 0;
};

}  // namespace standin
