#include "bench/replay/Player.h"

#include <utility>

#include "bench/replay/AddIn.h"

namespace Bench {
namespace {

class PlayedSink final : public WithoutNames<IDispatch> {
  public:
    PlayedSink(Player& player, int number) : player_(player), number_(number) {}
    STDMETHODIMP QueryInterface(REFIID, void** object) override {  // asked for IDispatch and its own event set alone
        *object = static_cast<IDispatch*>(this);
        AddRef();
        return S_OK;
    }
    STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT*, EXCEPINFO*,
                        UINT*) override {
        player_.Enter({Door::Kind::Event, number_, event}, *parameters);
        return S_OK;
    }

  private:
    Player& player_;
    int number_;
};

class PlayedRibbon;

class PlayedAddIn final : public WithoutNames<standin::Extensibility> {
  public:
    explicit PlayedAddIn(Player& player) : player_(player) {}
    ~PlayedAddIn() override { Enter(Door::Kind::End); }
    STDMETHODIMP QueryInterface(REFIID id, void** object) override;
    STDMETHODIMP OnConnection(IDispatch* application, int, IDispatch* addIn, SAFEARRAY**) override {
        VARIANT reversed[] = {ObjectArgument(addIn), ObjectArgument(application)};
        player_.Enter({Door::Kind::Connection}, {reversed, nullptr, 2, 0});
        return S_OK;
    }
    STDMETHODIMP OnDisconnection(int, SAFEARRAY**) override { return Enter(Door::Kind::Disconnection); }
    STDMETHODIMP OnAddInsUpdate(SAFEARRAY**) override { return Enter(Door::Kind::AddInsUpdate); }
    STDMETHODIMP OnStartupComplete(SAFEARRAY**) override { return Enter(Door::Kind::StartupComplete); }
    STDMETHODIMP OnBeginShutdown(SAFEARRAY**) override { return Enter(Door::Kind::BeginShutdown); }
    HRESULT CustomUI(BSTR* xml) {
        const std::wstring& text = player_.Enter({Door::Kind::CustomUI}, {}).text;
        *xml = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
        return S_OK;
    }

  private:
    HRESULT Enter(Door::Kind kind) {
        player_.Enter({kind}, {});
        return S_OK;
    }
    Player& player_;
};

class PlayedRibbon final : public WithoutNames<standin::RibbonExtensibility> {
  public:
    explicit PlayedRibbon(PlayedAddIn& addIn) : addIn_(addIn) { addIn_.AddRef(); }
    ~PlayedRibbon() override { addIn_.Release(); }
    STDMETHODIMP QueryInterface(REFIID id, void** object) override {
        if (id == IID_IDispatch || id == ribbonExtensibilityId) {
            *object = static_cast<standin::RibbonExtensibility*>(this);
            AddRef();
            return S_OK;
        }
        return addIn_.QueryInterface(id, object);
    }
    STDMETHODIMP GetCustomUI(BSTR, BSTR* xml) override { return addIn_.CustomUI(xml); }

  private:
    PlayedAddIn& addIn_;
};

STDMETHODIMP PlayedAddIn::QueryInterface(REFIID id, void** object) {
    if (id == ribbonExtensibilityId) {
        *object = static_cast<standin::RibbonExtensibility*>(new PlayedRibbon(*this));
        return S_OK;
    }
    const bool known = id == IID_IUnknown || id == IID_IDispatch || id == standin::iidExtensibility;
    *object = known ? static_cast<standin::Extensibility*>(this) : nullptr;
    if (known) AddRef();
    return known ? S_OK : E_NOINTERFACE;
}

}  // namespace

Player::Player(std::shared_ptr<const Tape> tape, Files files) : tape_(std::move(tape)), files_(files) {
    factory_ = std::make_unique<FactoryOf>([this] { return static_cast<IUnknown*>(new PlayedAddIn(*this)); });
    for (int number = 0; number < tape_->sinks; ++number) slots_.sinks.push_back(new PlayedSink(*this, number));
}

Player::~Player() {
    for (IDispatch* sink : slots_.sinks) sink->Release();
}

IUnknown* Player::Factory() const { return factory_.get(); }

bool Player::Whole() {
    PlayLetGo();
    return whole_ && next_ == tape_->steps.size();
}

void Player::Play(const Step& step) {
    if (step.kind == Step::Kind::FileCall && files_ == Files::LeftOut) return;
    ++made_[static_cast<std::size_t>(step.kind)];
    whole_ = step.play(slots_) && whole_;
    for (const int slot : step.letGo) slots_.objects[static_cast<std::size_t>(slot)]->Release();
}

// What the add-in let go of while the host was not in it.
void Player::PlayLetGo() {
    while (next_ < tape_->steps.size() && tape_->steps[next_].kind == Step::Kind::LetGo) Play(tape_->steps[next_++]);
}

const Step& Player::Enter(const Door& door, const DISPPARAMS& parameters) {
    static const Step nothing;
    PlayLetGo();
    const std::vector<Step>& steps = tape_->steps;
    if (!whole_ || next_ >= steps.size() || steps[next_].kind != Step::Kind::Enter || !(steps[next_].door == door)) {
        whole_ = false;
        return nothing;
    }
    std::size_t object = 0;
    const std::vector<int>& slots = steps[next_++].objects;
    for (UINT place = parameters.cArgs; place-- > 0;) {
        const VARIANT& argument = parameters.rgvarg[place];
        if (argument.vt != VT_DISPATCH || !argument.pdispVal || object == slots.size()) continue;
        argument.pdispVal->AddRef();
        Keep<IUnknown*>(slots_.objects, slots[object++], argument.pdispVal);
    }
    whole_ = whole_ && object == slots.size();
    while (whole_ && steps[next_].kind != Step::Kind::Leave) {
        const Step& step = steps[next_++];  // before it is played: the host may come in once more meanwhile
        if (step.kind == Step::Kind::Enter) {
            whole_ = false;
            return nothing;
        }
        Play(step);
    }
    return whole_ ? steps[next_++] : nothing;
}

}  // namespace Bench
