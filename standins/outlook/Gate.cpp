#include "outlook/Gate.h"

#include "outlook/Words.h"

namespace standin {

Counted::Counted(std::shared_ptr<Gate> gate) : gate_(std::move(gate)), serial_(gate_->nextSerial_++) {
    gate_->objects_[serial_] = this;
}

Counted::~Counted() { gate_->objects_.erase(serial_); }

unsigned long Counted::AddOutside() {
    if (++outside_ == 1) FirstOutside();
    return outside_;
}

unsigned long Counted::ReleaseOutside() {
    if (outside_ == 0) {
        gate_->Complain("released more often than held: " + Name());
        return 0;
    }
    const unsigned long left = --outside_;
    if (left == 0) {
        Hold();
        LastOutside();
        Drop();
    }
    return left;
}

void Counted::DestroyWhenFree() {
    if (inside_ == 0 && outside_ == 0) delete this;
}

HRESULT Gate::Pass(const Visit& visit) {
    ++calls;
    const Fault* planned = FaultFor(visit);
    const Fault fault = planned ? *planned : Fault{};
    std::size_t line = 0;
    const bool told = recording_ && (!visit.detail || detail_ == Detail::Everything);
    if (told) {
        Write(visit.request());
        line = lines.size();
    }
    ++depth_;
    const HRESULT answer = planned ? visit.spoil(fault) : visit.work();
    --depth_;
    if (recording_ && !told && FAILED(answer)) {
        Write(visit.request());
        line = lines.size();
    }
    if (line != 0 && line <= lines.size()) {
        std::string& written = lines[line - 1];
        written += FAILED(answer) ? " -> fails " + Hex(static_cast<unsigned long>(answer)) : visit.result();
        if (planned) written += " (planned)";
        if (onLine) onLine();
    }
    if (onReturn) onReturn();
    return answer;
}

const Fault* Gate::FaultFor(const Visit& visit) {
    const auto byNumber = faultsByNumber.find(calls);
    if (byNumber != faultsByNumber.end()) {
        ++faultsHit;
        hit_ = byNumber->second;
        faultsByNumber.erase(byNumber);
        return &hit_;
    }
    if (faultsByMember.empty()) return nullptr;
    const auto byMember = faultsByMember.find(visit.member());
    if (byMember == faultsByMember.end()) return nullptr;
    ++faultsHit;
    hit_ = byMember->second.fault;
    if (--byMember->second.times == 0) faultsByMember.erase(byMember);
    return &hit_;
}

std::vector<const Counted*> Gate::Held() const {
    std::vector<const Counted*> held;
    for (const auto& [serial, object] : objects_)
        if (object->Outside() != 0) held.push_back(object);
    return held;
}

Gate::Outward::Outward(Gate& gate, const std::function<std::string()>& text) : gate_(gate) {
    if (gate_.recording_) gate_.Write("! " + text());
    ++gate_.depth_;
}

void Gate::Complain(const std::string& text) {
    complaints.push_back(text);
    Write("? " + text);
}

void Gate::Write(const std::string& text) {
    if (!recording_) return;
    lines.push_back(std::string(static_cast<std::size_t>(depth_) * 2, ' ') + text);
    if (onLine) onLine();
}

}  // namespace standin
