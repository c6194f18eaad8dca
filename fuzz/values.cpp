// Equality, order and hash over a pool of values made in every way; copies, swaps and moves among them.

#include "Values.hpp"

int fuzz::holds(std::string_view input) {
    std::vector<IRI> pool(1);
    for (auto const line : split(input, '\n')) {
        if (auto iri = valueOf(line)) {
            pool.push_back(*iri);
        }
    }
    foundation::network::IRITextLess const less;
    for (auto const& a : pool) {
        for (auto const& b : pool) {
            Text const left = a.toString(false);
            Text const right = b.toString(false);
            bool const same = a.isEmpty() == b.isEmpty() && left == right;
            require((a == b) == same && (b == a) == same && (a != b) == !same, "equality", left, right);
            require(!same || a.hashValue() == b.hashValue(), "equal values, other hashes", left, right);
            require(less(a, b) + less(b, a) == !same, "less, greater, or the same text", left, right);
        }
    }
    for (std::size_t i = 0; i + 1 < pool.size(); i += 2) {
        IRI& a = pool[i];
        IRI& b = pool[i + 1];
        std::string const whatA = answers(a);
        std::string const whatB = answers(b);
        IRI copy(a);
        copy.swap(b);
        a = copy;
        require(answers(a) == whatB && answers(b) == whatA, "a swap lost something", a.toString(false));
        b = std::move(copy);
        require(answers(b) == whatB && answers(copy) == answers(IRI()), "a move", b.toString(false));
    }
    return 0;
}
