#include "errors.h"

#include <string_view>

namespace support {

namespace {

std::string paramText(const RtxErrorParam &param) {
  switch (param.kind) {
  case RTX_PARAM_TEXT: return std::string(param.text, param.length);
  case RTX_PARAM_INT: return std::to_string(param.intValue);
  case RTX_PARAM_UINT: return std::to_string(param.uintValue) + "u";
  }
  return "?";
}

std::string siteText(const RtxErrorSite &site) {
  const std::string_view path = site.path == nullptr ? "null" : site.path;
  if (path.starts_with("runtime/")) return std::string(path);
  return std::string(path.substr(path.rfind('/') + 1)) + ":" + std::to_string(site.line);
}

} // namespace

std::string errorText(const RtxError &error) {
  std::string text = std::to_string(error.status);
  if (error.paramCount != 0) {
    text += "(";
    for (uint32_t i = 0; i < error.paramCount; ++i) {
      if (i != 0) text += ",";
      text += paramText(error.params[i]);
    }
    text += ")";
  }
  for (uint32_t i = 0; i < error.siteCount; ++i) {
    text += i == 0 ? "@" : "<";
    text += siteText(error.sites[i]);
  }
  return text;
}

std::string placeText(const RtxError &error) {
  return std::to_string(error.line) + ":" + std::to_string(error.column) + "+" + std::to_string(error.offset) + " " +
         (error.elementPath == nullptr ? "null" : error.elementPath);
}

std::vector<std::string> errorTexts(RuntimeContext *ctx) {
  std::vector<std::string> texts;
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i)
    texts.push_back(errorText(*error));
  return texts;
}

std::string errors(RuntimeContext *ctx) {
  std::string all;
  for (const std::string &text : errorTexts(ctx))
    all += (all.empty() ? "" : "; ") + text;
  return all;
}

std::vector<int> statuses(RuntimeContext *ctx) {
  std::vector<int> all;
  for (uint32_t i = 0; const RtxError *error = rtxErrAt(ctx, i); ++i)
    all.push_back(error->status);
  return all;
}

} // namespace support
