#include "encoding.h"

namespace dialogs {

namespace {

const Shape stateShape = {
    {{1, " event=\"local-bye\""}, {2, " code=\"200\""}}, " xmlns:x=\"urn:x\"", {{0, "confirmed"}}};
const Shape replacesShape = {{{0, " call-id=\"rep-call\" local-tag=\"rep-local\" remote-tag=\"rep-remote\""}}, "", {}};
const Shape nameaddrShape = {{{1, " display-name=\"Ann\""}}, " xmlns:y=\"urn:y\"", {{0, "sip:ann"}}};
const Shape routeSetShape = {{}, "", {{0, "<~hop>sip:hop1</~hop><~hop>sip:hop2</~hop>"}}, false};
const Shape paramShape = {{{0, " pname=\"rendering\" pval=\"no\""}}, "", {}};
const Shape targetShape = {{{0, " uri=\"sip:target\""}},
                           "",
                           {{0, "<~param pname=\"audio\" pval=\"yes\"/><~param pname=\"rendering\" pval=\"no\"/>"}}};
const Shape sessdShape = {{{0, " type=\"application/sdp\""}}, " xmlns:z=\"urn:z\"", {{0, "v=0"}}};
const Shape participantShape = {{},
                                "",
                                {{1, nameaddrShape.element("~identity")},
                                 {2, targetShape.element("~target")},
                                 {4, sessdShape.element("~session-description")},
                                 {8, "<~cseq>17</~cseq>"},
                                 {0, "<f/><g>1</g>"}},
                                false};
const Shape dialogShape = {{{0, " id=\"d1\""},
                            {64, " call-id=\"call\""},
                            {128, " local-tag=\"local\""},
                            {256, " remote-tag=\"remote\""},
                            {512, " direction=\"recipient\""}},
                           "",
                           {{0, stateShape.element("~state")},
                            {1, "<~duration>90</~duration>"},
                            {2, replacesShape.element("~replaces")},
                            {4, nameaddrShape.element("~referred-by")},
                            {8, routeSetShape.element("~route-set")},
                            {16, participantShape.element("~local")},
                            {32, participantShape.element("~remote")},
                            {0, "<h/><i/>"}}};
const Shape infoShape = {{{0, " version=\"5\" state=\"partial\" entity=\"sip:entity\""}},
                         "",
                         {{0, dialogShape.element("~dialog") + "<~dialog id=\"d2\"><~state/></~dialog>" + "<j/><k/>"}}};

} // namespace

template <> const Shape &shapeOf<tns__state>() { return stateShape; }
template <> const Shape &shapeOf<tns__dialog_replaces>() { return replacesShape; }
template <> const Shape &shapeOf<tns_nameaddr>() { return nameaddrShape; }
template <> const Shape &shapeOf<tns__dialog_route_set>() { return routeSetShape; }
template <> const Shape &shapeOf<tns_participant_target_param>() { return paramShape; }
template <> const Shape &shapeOf<tns_participant_target>() { return targetShape; }
template <> const Shape &shapeOf<tns_sessd>() { return sessdShape; }
template <> const Shape &shapeOf<tns_participant>() { return participantShape; }
template <> const Shape &shapeOf<tns__dialog>() { return dialogShape; }
template <> const Shape &shapeOf<tns__dialog_info>() { return infoShape; }

std::vector<int> trail(RuntimeContext *ctx) {
  std::vector<int> lines;
  EXPECT_EQ(rtxErrCount(ctx), 1u);
  const RtxError *error = rtxErrAt(ctx, 0);
  if (error == nullptr) return lines;
  EXPECT_EQ(error->siteCount, error->siteTotal);
  for (uint32_t i = 0; i < error->siteCount; ++i) {
    EXPECT_EQ(error->sites[i].path, "xmlAddOns/addons/IMS/DialogInfo/QxXmlDialogInfoEnc"s);
    EXPECT_GT(error->sites[i].line, 0);
    lines.push_back(error->sites[i].line);
  }
  return lines;
}

} // namespace dialogs
