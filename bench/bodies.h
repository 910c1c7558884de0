// The documents that are measured.
#pragma once

#include <string_view>

namespace bench {

// A composing indication of 335 bytes, as a chat client sends it.
inline constexpr std::string_view composingBody =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<isComposing xmlns=\"urn:ietf:params:xml:ns:im-iscomposing\"\n"
    "  xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\"\n"
    "  xsi:schemaLocation=\"urn:ietf:params:xml:ns:im-iscomposing composing.xsd\">\n"
    "  <state>active</state>\n"
    "  <contenttype>text/plain</contenttype>\n"
    "  <refresh>1200</refresh>\n"
    "</isComposing>\n";

} // namespace bench
