// The record types of dialog state and its documents, with the functions that each of them has.
#pragma once

#include "DialogInfo/QxXmlDialogInfo.h"
#include "record.h"

namespace dialogs {

// Gives back what no function of the library does: nothing, of most types.
template <typename T> void releaseRest(RuntimeContext *, const T &) {}
void releaseRest(RuntimeContext *ctx, const tns__dialog_replaces &record);
void releaseRest(RuntimeContext *ctx, const tns_participant_target_param &record);
void releaseRest(RuntimeContext *ctx, const tns_participant_target &record);
void releaseRest(RuntimeContext *ctx, const tns_participant &record);
void releaseRest(RuntimeContext *ctx, const tns__dialog &record);
void releaseRest(RuntimeContext *ctx, const tns__dialog_info &record);

} // namespace dialogs

#define DIALOGS_FUNCTIONS(T, FREE)                                                                                     \
  template <> struct support::Functions<T> {                                                                           \
    RECORD_FUNCTIONS(T)                                                                                                \
    HANDLER_FUNCTIONS(T)                                                                                               \
    RELEASE_FUNCTIONS(T, dialogs::releaseRest, FREE)                                                                   \
  };
DIALOGS_FUNCTIONS(tns__state, QxMemFree_tns__state)
DIALOGS_FUNCTIONS(tns__dialog_replaces, nullptr)
DIALOGS_FUNCTIONS(tns_nameaddr, QxMemFree_tns_nameaddr)
DIALOGS_FUNCTIONS(tns__dialog_route_set, QxMemFree_tns__dialog_route_set)
DIALOGS_FUNCTIONS(tns_participant_target_param, nullptr)
DIALOGS_FUNCTIONS(tns_participant_target, QxMemFree_tns_participant_target)
DIALOGS_FUNCTIONS(tns_sessd, QxMemFree_tns_sessd)
DIALOGS_FUNCTIONS(tns_participant, QxMemFree_tns_participant)
DIALOGS_FUNCTIONS(tns__dialog, QxMemFree_tns__dialog)
DIALOGS_FUNCTIONS(tns__dialog_info, QxMemFree_tns__dialog_info)
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
