#include "platform/RouteDump.hpp"

#include <linux/netlink.h>
#include <linux/rtnetlink.h>

#include <algorithm>
#include <cerrno>
#include <limits>

namespace foundation::network::platform {

namespace {

// The kernel fills datagrams up to this size for a reader that has room for them.
constexpr std::size_t kernelDatagram = 32768;

// Messages and attributes begin at multiples of four bytes.
static_assert(NLMSG_ALIGNTO == 4 && RTA_ALIGNTO == 4);

Bytes behind(Bytes bytes, std::size_t length) {
    return bytes.subspan(std::min((length + 3) / 4 * 4, bytes.size()));
}

struct Request {
    nlmsghdr header{};
    ifinfomsg body{}; // as long as an ifaddrmsg or longer; zero asks for every family
    rtattr attribute{};
    std::uint32_t filter = RTEXT_FILTER_SKIP_STATS; // counters are half of an answer and nobody reads them
};
static_assert(sizeof(Request) == NLMSG_LENGTH(sizeof(ifinfomsg)) + RTA_LENGTH(sizeof(std::uint32_t)));

} // namespace

void forEachAttribute(Bytes attributes, std::function<void(unsigned int, Bytes)> const& visit) {
    rtattr head{};
    while (peel(attributes, head) && head.rta_len >= sizeof(head) && head.rta_len <= attributes.size()) {
        visit(head.rta_type & static_cast<unsigned int>(NLA_TYPE_MASK),
              attributes.subspan(sizeof(head), head.rta_len - sizeof(head)));
        attributes = behind(attributes, head.rta_len);
    }
}

RouteDump::RouteDump(LinuxCalls const& systemCalls)
    : calls(systemCalls),
      buffer(kernelDatagram),
      socket(systemCalls.openRouteSocket()),
      openError(socket < 0 ? errno : 0) {}

RouteDump::~RouteDump() {
    if (socket >= 0) {
        calls.close(socket);
    }
}

RouteDump::Outcome RouteDump::ask(std::uint16_t table, std::uint16_t answer,
                                  std::function<bool(Bytes)> const& visit) {
    if (openError != 0) {
        return {openError, false};
    }
    Request request;
    request.header.nlmsg_type = table;
    request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    request.header.nlmsg_seq = ++sequence;
    request.attribute.rta_type = IFLA_EXT_MASK;
    request.attribute.rta_len = RTA_LENGTH(sizeof(request.filter));
    // Only the table of links knows the filter; the other's request ends before it.
    std::size_t const size = table == RTM_GETLINK ? sizeof(request) : NLMSG_LENGTH(sizeof(ifaddrmsg));
    request.header.nlmsg_len = static_cast<std::uint32_t>(size);

    std::ptrdiff_t sent = 0;
    do {
        sent = calls.send(socket, &request, size);
    } while (sent < 0 && errno == EINTR);
    if (sent < 0) {
        return {errno, false};
    }
    Outcome outcome;
    while (readDatagram(answer, visit, outcome) == Step::More) {
    }
    return outcome;
}

// The next datagram as a whole. Its size is asked for first: a message cut short can't be read again.
std::ptrdiff_t RouteDump::receive() {
    std::ptrdiff_t size = 0;
    do {
        size = calls.nextSize(socket);
        if (size >= 0) {
            buffer.resize(std::max(buffer.size(), static_cast<std::size_t>(size)));
            size = calls.receive(socket, buffer.data(), buffer.size());
        }
    } while (size < 0 && errno == EINTR);
    return size;
}

RouteDump::Step RouteDump::readDatagram(std::uint16_t answer, std::function<bool(Bytes)> const& visit,
                                        Outcome& outcome) {
    std::ptrdiff_t const size = receive();
    if (size <= 0) {
        outcome.error = size < 0 ? errno : ECONNRESET;
        return Step::Done;
    }
    Bytes messages = Bytes(buffer).first(static_cast<std::size_t>(size));
    nlmsghdr header{};
    while (peel(messages, header)) {
        if (header.nlmsg_len < sizeof(header) || header.nlmsg_len > messages.size()) {
            outcome.error = EBADMSG;
            return Step::Done;
        }
        Bytes const payload = messages.subspan(sizeof(header), header.nlmsg_len - sizeof(header));
        messages = behind(messages, header.nlmsg_len);
        if (header.nlmsg_seq != sequence) {
            continue;
        }
        if ((header.nlmsg_flags & NLM_F_DUMP_INTR) != 0) {
            outcome.changed = true;
            return Step::Done;
        }
        if (header.nlmsg_type == NLMSG_DONE || header.nlmsg_type == NLMSG_ERROR) {
            // Both carry a negative error number or zero; the end may carry none.
            int status = 0;
            bool const carriesOne = peel(payload, status) || header.nlmsg_type == NLMSG_DONE;
            bool const makesSense = carriesOne && status <= 0 && status > std::numeric_limits<int>::min();
            outcome.error = makesSense ? -status : EBADMSG;
            return Step::Done;
        }
        if (header.nlmsg_type == answer && !visit(payload)) {
            outcome.error = EBADMSG;
            return Step::Done;
        }
    }
    return Step::More;
}

} // namespace foundation::network::platform
