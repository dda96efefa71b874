// Wildcards of searches.
#include "names/wildcards.h"

#include "text/case_mapping.h"

namespace machine {

namespace {

// Whether the pattern from there on fits nothing: "*", or "." in front of a "*".
bool fitsNothing(std::u16string_view pattern) {
    while (!pattern.empty()) {
        const bool optionalDot = pattern.starts_with(u".*");
        if (pattern[0] != u'*' && !optionalDot) return false;
        pattern.remove_prefix(1);
    }
    return true;
}

// Goes back to the last "*" whenever the rest does not fit.
bool fitsPlainly(std::u16string_view name, std::u16string_view pattern) {
    std::size_t n = 0, p = 0, starAt = std::u16string_view::npos, resumeAt = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            starAt = p++;
            resumeAt = n;
        } else if (p < pattern.size() &&
                   (pattern[p] == u'?' || upperCase(pattern[p]) == upperCase(name[n]))) {
            ++p;
            ++n;
        } else if (starAt != std::u16string_view::npos) {
            p = starAt + 1;
            n = ++resumeAt;
        } else {
            return false;
        }
    }
    return fitsNothing(pattern.substr(p));
}

}  // namespace

bool hasWildcards(std::u16string_view pattern) {
    return pattern.find_first_of(u"*?") != std::u16string_view::npos;
}

bool fitsPattern(std::u16string_view name, std::u16string_view pattern) {
    if (fitsPlainly(name, pattern)) return true;
    const bool noDotWanted = !pattern.empty() && pattern.back() == u'.';
    return noDotWanted && name.find(u'.') == std::u16string_view::npos &&
           fitsPlainly(name, pattern.substr(0, pattern.size() - 1));
}

}  // namespace machine
