#include "pcsc.h"

#include <winscard.h>

#include <algorithm>
#include <cstring>

namespace nfc_ndef::tags {
namespace {

using Clock = std::chrono::steady_clock;
constexpr auto longest_wait = std::chrono::milliseconds(500); // then a look at what else there is
constexpr const char *any_new_reader = "\\\\?PnP?\\Notification";

[[noreturn]] void unavailable(LONG result)
{
    switch (result) {
    case SCARD_E_NO_SERVICE:
    case SCARD_E_SERVICE_STOPPED:
        throw Unavailable("there is no PC/SC service (is pcscd installed and running?)");
    case SCARD_W_REMOVED_CARD:
    case SCARD_E_NO_SMARTCARD:
    case SCARD_W_UNPOWERED_CARD:
    case SCARD_W_UNRESPONSIVE_CARD:
    case SCARD_W_RESET_CARD:
    case SCARD_E_NOT_TRANSACTED:
    case SCARD_F_COMM_ERROR:
        throw Gone();
    case SCARD_E_READER_UNAVAILABLE:
    case SCARD_E_UNKNOWN_READER:
        throw Unavailable("the reader was taken away");
    case SCARD_E_SHARING_VIOLATION:
        throw Unavailable("another program uses the tag");
    default:
        throw Unavailable(std::string("PC/SC: ") + pcsc_stringify_error(result));
    }
}

void must(LONG result)
{
    if (result != SCARD_S_SUCCESS)
        unavailable(result);
}

bool has_card(const SCARD_READERSTATE &state)
{
    return (state.dwEventState & SCARD_STATE_PRESENT) != 0 && (state.dwEventState & SCARD_STATE_MUTE) == 0;
}

} // namespace

struct Service::State {
    State() { must(SCardEstablishContext(SCARD_SCOPE_SYSTEM, nullptr, nullptr, &context)); }
    State(const State &) = delete;
    State &operator=(const State &) = delete;
    ~State() { SCardReleaseContext(context); }

    std::vector<std::string> names() const
    {
        DWORD length = 0;
        LONG result = SCardListReaders(context, nullptr, nullptr, &length);
        std::string list(length, '\0');
        if (result == SCARD_S_SUCCESS)
            result = SCardListReaders(context, nullptr, list.data(), &length);
        if (result == SCARD_E_NO_READERS_AVAILABLE || result == SCARD_E_INSUFFICIENT_BUFFER)
            return {}; // or one came meanwhile, which the next look finds
        must(result);
        std::vector<std::string> names;
        for (const char *name = list.c_str(); *name != '\0'; name += std::strlen(name) + 1)
            names.emplace_back(name);
        return names;
    }

    // What is so now, or after something changed in so many milliseconds.
    bool look(std::vector<SCARD_READERSTATE> &states, DWORD milliseconds) const
    {
        const LONG result = SCardGetStatusChange(context, milliseconds, states.data(), states.size());
        if (result == SCARD_E_TIMEOUT || result == SCARD_E_UNKNOWN_READER)
            return false;
        must(result);
        return true;
    }

    static std::vector<SCARD_READERSTATE> states_of(const std::vector<std::string> &names)
    {
        std::vector<SCARD_READERSTATE> states(names.size());
        for (size_t i = 0; i < names.size(); ++i)
            states[i].szReader = names[i].c_str();
        return states;
    }

    SCARDCONTEXT context{};
};

namespace {

// Taken hold of as long as it exists, so that nobody else talks in between.
class PcscCard : public Card {
public:
    PcscCard(std::shared_ptr<Service::State> service, SCARDHANDLE handle, DWORD protocol)
        : service_(std::move(service)), handle_(handle), protocol_(protocol)
    {
        SCardBeginTransaction(handle_);
    }
    ~PcscCard() override
    {
        SCardEndTransaction(handle_, SCARD_LEAVE_CARD);
        SCardDisconnect(handle_, SCARD_LEAVE_CARD);
    }

    Bytes answer_to_reset() override
    {
        Bytes answer(MAX_ATR_SIZE);
        DWORD length = answer.size();
        must(SCardStatus(handle_, nullptr, nullptr, nullptr, nullptr, answer.data(), &length));
        answer.resize(length);
        return answer;
    }

    Bytes transmit(ByteView command) override
    {
        Bytes response(MAX_BUFFER_SIZE);
        DWORD length = response.size();
        const SCARD_IO_REQUEST *const header = protocol_ == SCARD_PROTOCOL_T0 ? SCARD_PCI_T0 : SCARD_PCI_T1;
        must(SCardTransmit(handle_, header, command.data(), command.size(), nullptr, response.data(), &length));
        response.resize(length);
        return response;
    }

private:
    std::shared_ptr<Service::State> service_;
    SCARDHANDLE handle_;
    DWORD protocol_;
};

// The readers that a name means: the one that has it, else those that have it as a part of theirs.
std::vector<std::string> meant(const std::vector<std::string> &names, const std::string &name)
{
    if (std::ranges::find(names, name) != names.end())
        return {name};
    std::vector<std::string> found;
    std::ranges::copy_if(names, std::back_inserter(found),
                         [&](const std::string &one) { return one.find(name) != std::string::npos; });
    if (!name.empty() && found.size() > 1)
        throw Unavailable("the name fits several readers");
    return found;
}

} // namespace

Service::Service() : state_(std::make_shared<State>()) {}

std::vector<Reader> Service::readers() const
{
    const std::vector<std::string> names = state_->names();
    std::vector<SCARD_READERSTATE> states = State::states_of(names);
    if (!states.empty())
        state_->look(states, 0);
    std::vector<Reader> readers;
    for (size_t i = 0; i < names.size(); ++i)
        readers.push_back({names[i], has_card(states[i]), static_cast<unsigned>(states[i].dwEventState >> 16)});
    return readers;
}

std::unique_ptr<Card> Service::wait_for_card(const std::string &reader, std::chrono::milliseconds time) const
{
    const Clock::time_point end = Clock::now() + time;
    for (;;) {
        const std::vector<std::string> names = meant(state_->names(), reader);
        std::vector<SCARD_READERSTATE> states = State::states_of(names);
        if (!states.empty())
            state_->look(states, 0);
        for (SCARD_READERSTATE &state : states) {
            SCARDHANDLE handle{};
            DWORD protocol{};
            if (has_card(state) &&
                SCardConnect(state_->context, state.szReader, SCARD_SHARE_SHARED, SCARD_PROTOCOL_T0 | SCARD_PROTOCOL_T1,
                             &handle, &protocol) == SCARD_S_SUCCESS)
                return std::make_unique<PcscCard>(state_, handle, protocol);
            state.dwCurrentState = state.dwEventState;
        }
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
        if (left.count() <= 0)
            throw Unavailable(!names.empty()   ? "there is no tag on the reader"
                              : reader.empty() ? "there is no reader"
                                               : "there is no reader of that name");
        states.emplace_back().szReader = any_new_reader;
        state_->look(states, static_cast<DWORD>(std::min(left, longest_wait).count()));
    }
}

} // namespace nfc_ndef::tags
