#pragma once
// A text of the resource library by id, with a fallback compiled into the module for when the library
// or the id is missing.

namespace qvtd {

class ResourceText {
public:
    static constexpr int kCapacity = 1000;

    // fallback may be null: a missing text is then empty.
    ResourceText(unsigned id, const char* fallback);

    // Loads the text (again) and returns it; never null.
    const char* fetch();
    operator const char*() { return fetch(); }

private:
    char m_text[kCapacity] = {};
    const char* m_fallback;
    unsigned m_id;
};

} // namespace qvtd
