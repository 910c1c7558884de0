#include "Catalogue.h"

#include "IsComposing/QxXmlIsComposingTables.h"

namespace ims {

namespace {

constexpr const DocumentSchema *documents[] = {
    &tns_isComposingDocument,
};

} // namespace

DocumentRange allDocuments() { return {documents, documents + sizeof(documents) / sizeof(documents[0])}; }

} // namespace ims
