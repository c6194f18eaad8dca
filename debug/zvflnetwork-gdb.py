# How GDB shows the values of libzvflnetwork. An IRI reads as its text, an address as its address:
#
#   (gdb) print iri
#   $1 = http://bücher.example/a?q
#
# Only memory is read and nothing in the process is called, so it works on core files, too. The members that are read
# are those of TemplateIRI.hpp, StoredText.hpp, ParseResult.hpp, Utf8.hpp, QueryParameters.hpp, InetNetwork.hpp and of the
# classes with the suffix Impl; strings, pointers and optional values are taken as libstdc++ lays them out. Where such a layout
# changes, change `iri_text` or the printer of the class here, and tests/debugger tells whether it fits.

import socket

import gdb
import gdb.printing

MOVED_FROM = "(moved from)"


def units(pointer, length, size, encoding):
    """Text in memory, not more of it than `set print elements` allows."""
    limit = gdb.parameter("print elements") or length
    shown = min(length, limit)
    if shown == 0:
        return ""
    memory = gdb.selected_inferior().read_memory(int(pointer), shown * size)
    return bytes(memory).decode(encoding, "replace") + ("..." if shown < length else "")


def text(string):
    """A std::string, std::u16string or std::u32string."""
    pointer = string["_M_dataplus"]["_M_p"]
    size = pointer.dereference().type.sizeof
    encoding = {1: "utf-8", 2: "utf-16-le", 4: "utf-32-le"}[size]
    return units(pointer, int(string["_M_string_length"]), size, encoding)


def iri_text(value):
    """The stored text: of a parsed value the text that was parsed, of another its components in the forms in which
    they were given."""
    return text(value["stored"]["text"])


def asio_address(address):
    if int(address["type_"]) == 0:
        pointer = address["ipv4_address_"]["addr_"].address
        return socket.inet_ntop(socket.AF_INET, bytes(gdb.selected_inferior().read_memory(int(pointer), 4)))
    v6 = address["ipv6_address_"]
    memory = gdb.selected_inferior().read_memory(int(v6["addr_"].address), 16)
    scope = int(v6["scope_id_"])
    return socket.inet_ntop(socket.AF_INET6, bytes(memory)) + ("%%%d" % scope if scope else "")


class Printer:
    def __init__(self, value):
        self.value = value

    def to_string(self):
        try:
            return self.shown()
        except (gdb.error, gdb.MemoryError) as reason:
            return "(cannot be shown: %s)" % reason


class Handle(Printer):
    """A value with a shared pointer to its content; empty once it was moved from."""

    def shown(self):
        content = self.value["impl"]["_M_ptr"]
        return MOVED_FROM if int(content) == 0 else self.of(content.dereference())


class Iri(Printer):
    def shown(self):
        return iri_text(self.value["value"])


class IriValue(Printer):
    def shown(self):
        return iri_text(self.value)


class Utf8View(Printer):
    def shown(self):
        return iri_text(self.value["iri"].referenced_value()["value"])


class ParseFault(Printer):
    def shown(self):
        component, reason = (str(self.value[name]).split("::")[-1] for name in ("component", "reason"))
        return "offset %d, %s, %s" % (int(self.value["offset"]), component, reason)


class ParseResult(Printer):
    def shown(self):
        iri = self.value["iri"]["_M_payload"]
        if iri["_M_engaged"]:
            return iri_text(iri["_M_payload"]["_M_value"]["value"])
        return ParseFault(self.value["fault"]).shown()


class QueryParameters(Printer):
    def shown(self):
        return text(self.value["text"])


class InetAddress(Handle):
    def of(self, content):
        name = text(self.value["hostName"])
        return asio_address(content["address"]) + (" (%s)" % name if name else "")


class InetNetwork(Printer):
    def shown(self):
        elements = self.value["bytes"]["_M_elems"]
        family, size = (socket.AF_INET, 4) if int(self.value["version"]) == 4 else (socket.AF_INET6, 16)
        first = socket.inet_ntop(family, bytes(int(elements[at]) for at in range(size)))
        return "%s/%d" % (first, int(self.value["length"]))


class InterfaceAddress(Handle):
    def of(self, content):
        return text(content["text"])


class NetworkInterface(Handle):
    def of(self, content):
        return "%s (%s)" % (text(content["friendlyName"]), text(content["identifier"]))


class HardwareAddress(Printer):
    def shown(self):
        items = self.value["items"]["_M_impl"]
        begin, end = int(items["_M_start"]), int(items["_M_finish"])
        if begin == end:
            return "(none)"
        return ":".join("%02x" % byte for byte in bytes(gdb.selected_inferior().read_memory(begin, end - begin)))


def printers():
    collection = gdb.printing.RegexpCollectionPrettyPrinter("zvflnetwork")
    for printer in (
        InetAddress,
        InetNetwork,
        InterfaceAddress,
        NetworkInterface,
        HardwareAddress,
        ParseFault,
        ParseResult,
        QueryParameters,
        Utf8View,
    ):
        collection.add_printer(printer.__name__, "^foundation::network::%s$" % printer.__name__, printer)
    collection.add_printer("IRI", "^foundation::network::IRI$", Iri)
    collection.add_printer("TemplateIRI", "^foundation::network::iri::detail::TemplateIRI<.*>$", IriValue)
    return collection


gdb.printing.register_pretty_printer(gdb.current_objfile(), printers(), replace=True)
