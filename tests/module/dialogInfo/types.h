// The record types of dialog state and its documents, with the functions that each of them has.
#pragma once

#include "DialogInfo/QxXmlDialogInfo.h"
#include "record.h"

#define DIALOGS_FUNCTIONS(T)                                                                                           \
  template <> struct support::Functions<T> {                                                                           \
    RECORD_FUNCTIONS(T)                                                                                                \
    HANDLER_FUNCTIONS(T)                                                                                               \
    static void release(RuntimeContext *ctx, T *record);                                                               \
  };
DIALOGS_FUNCTIONS(tns__state)
DIALOGS_FUNCTIONS(tns__dialog_replaces)
DIALOGS_FUNCTIONS(tns_nameaddr)
DIALOGS_FUNCTIONS(tns__dialog_route_set)
DIALOGS_FUNCTIONS(tns_participant_target_param)
DIALOGS_FUNCTIONS(tns_participant_target)
DIALOGS_FUNCTIONS(tns_sessd)
DIALOGS_FUNCTIONS(tns_participant)
DIALOGS_FUNCTIONS(tns__dialog)
DIALOGS_FUNCTIONS(tns__dialog_info)
#undef DIALOGS_FUNCTIONS

namespace dialogs {

inline constexpr const char *namespaceUri = "urn:ietf:params:xml:ns:dialog-info";

// Calls test<T>() for each record type.
template <typename Test> void forEachType(const Test &test) {
  support::forEachType<tns__state, tns__dialog_replaces, tns_nameaddr, tns__dialog_route_set,
                       tns_participant_target_param, tns_participant_target, tns_sessd, tns_participant, tns__dialog,
                       tns__dialog_info>(test);
}

// The document whose root is of a type.
template <typename T> struct Document;

#define DIALOGS_DOCUMENT(T, function, rootName)                                                                        \
  template <> struct Document<T> {                                                                                     \
    static constexpr const char *root = rootName;                                                                      \
    static constexpr auto encode = QxXmlE_##function;                                                                  \
    static constexpr auto startElement = QxXmlE_##function##_StartElement;                                             \
    static constexpr auto contents = QxXmlE_##function##_Contents;                                                     \
    static constexpr auto endElement = QxXmlE_##function##_EndElement;                                                 \
    static constexpr auto decode = QxXmlD_##function;                                                                  \
    static constexpr auto validate = QxXmlV_##function;                                                                \
  };
DIALOGS_DOCUMENT(tns__dialog_info, tns_dialog_info, "dialog-info")
DIALOGS_DOCUMENT(tns__dialog, tns_dialog, "dialog")
DIALOGS_DOCUMENT(tns__state, tns_state, "state")
#undef DIALOGS_DOCUMENT

} // namespace dialogs
