#include "platform/RouteSocket.hpp"

#include <linux/netlink.h>
#include <linux/rtnetlink.h>

#include <algorithm>
#include <cerrno>
#include <limits>

namespace foundation::network::platform {

namespace {

// The kernel makes datagrams of up to this size if the reader's buffer is as large.
constexpr std::size_t datagramSize = 32768;

static_assert(NLMSG_ALIGNTO == 4 && RTA_ALIGNTO == 4);

// What follows a message or an attribute of this length: the next one begins at a multiple of four bytes.
Bytes skipAligned(Bytes bytes, std::size_t length) {
    return bytes.subspan(std::min((length + 3) / 4 * 4, bytes.size()));
}

struct Request {
    nlmsghdr header{};
    ifinfomsg body{}; // no shorter than an ifaddrmsg; all zero requests every family
    rtattr attribute{};
    // Nobody reads the counters, which would make up half of an answer.
    std::uint32_t filter = RTEXT_FILTER_SKIP_STATS;
};
static_assert(sizeof(Request) == NLMSG_LENGTH(sizeof(ifinfomsg)) + RTA_LENGTH(sizeof(std::uint32_t)));

} // namespace

void forEachAttribute(Bytes attributes, std::function<void(unsigned int, Bytes)> const& visit) {
    rtattr head{};
    while (readRecord(attributes, head) && head.rta_len >= sizeof(head) &&
           head.rta_len <= attributes.size()) {
        visit(head.rta_type & static_cast<unsigned int>(NLA_TYPE_MASK),
              attributes.subspan(sizeof(head), head.rta_len - sizeof(head)));
        attributes = skipAligned(attributes, head.rta_len);
    }
}

RouteSocket::RouteSocket(LinuxCalls const& systemCalls)
    : calls(systemCalls),
      buffer(datagramSize),
      socket(systemCalls.openRouteSocket()),
      openError(socket < 0 ? errno : 0) {}

RouteSocket::~RouteSocket() {
    if (socket >= 0) {
        calls.close(socket);
    }
}

RouteSocket::Outcome RouteSocket::dump(std::uint16_t type, std::uint16_t answer,
                                       std::function<bool(Bytes)> const& visit) {
    if (openError != 0) {
        return {openError, false};
    }
    Request request;
    request.header.nlmsg_type = type;
    request.header.nlmsg_flags = NLM_F_REQUEST | NLM_F_DUMP;
    request.header.nlmsg_seq = ++sequence;
    request.attribute.rta_type = IFLA_EXT_MASK;
    request.attribute.rta_len = RTA_LENGTH(sizeof(request.filter));
    // Only RTM_GETLINK takes the filter, so the other request ends before it.
    std::size_t const size = type == RTM_GETLINK ? sizeof(request) : NLMSG_LENGTH(sizeof(ifaddrmsg));
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

// Receives the next datagram. Its size is asked for first, since what does not fit into the buffer is lost.
std::ptrdiff_t RouteSocket::receive() {
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

RouteSocket::Step RouteSocket::readDatagram(std::uint16_t answer, std::function<bool(Bytes)> const& visit,
                                            Outcome& outcome) {
    std::ptrdiff_t const size = receive();
    if (size <= 0) {
        outcome.error = size < 0 ? errno : ECONNRESET;
        return Step::Done;
    }
    Bytes messages = Bytes(buffer).first(static_cast<std::size_t>(size));
    nlmsghdr header{};
    while (readRecord(messages, header)) {
        if (header.nlmsg_len < sizeof(header) || header.nlmsg_len > messages.size()) {
            outcome.error = EBADMSG;
            return Step::Done;
        }
        Bytes const payload = messages.subspan(sizeof(header), header.nlmsg_len - sizeof(header));
        messages = skipAligned(messages, header.nlmsg_len);
        if (header.nlmsg_seq != sequence) {
            continue;
        }
        if ((header.nlmsg_flags & NLM_F_DUMP_INTR) != 0) {
            outcome.changed = true;
            return Step::Done;
        }
        if (header.nlmsg_type == NLMSG_DONE || header.nlmsg_type == NLMSG_ERROR) {
            // Both carry a negative error number or zero; NLMSG_DONE may carry none.
            int status = 0;
            bool const carriesOne = readRecord(payload, status) || header.nlmsg_type == NLMSG_DONE;
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
