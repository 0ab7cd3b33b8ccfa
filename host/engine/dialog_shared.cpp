#include "dialog_shared.h"

#include <filesystem>
#include <system_error>

#include "state.h"

namespace cantel_engine {

namespace fs = std::filesystem;

std::int64_t given(const void* pointer) { return pointer != nullptr ? 1 : 0; }

std::size_t log_call(const char* fn, bool own_dialog, std::initializer_list<std::int64_t> args,
                     std::uint32_t version) {
  auto& calls = state().calls;
  calls.push_back(HostCall{fn, args, std::nullopt, !own_dialog, version});
  return calls.size() - 1;
}

void log_call_result(std::size_t index, std::int64_t result) {
  auto& calls = state().calls;
  if (index < calls.size()) calls[index].result = result;
}

std::size_t log_dialog_call(std::uint16_t id, const void* procedure, const std::uint32_t* word,
                            std::uint16_t mode, const void* instance, std::uint32_t version) {
  return log_call("CX_Dialog", true, {id, given(procedure), given(word), mode, given(instance)},
                  version);
}

std::int64_t dialog_ended(std::size_t call, const std::uint32_t* word, bool ended_by_plugin) {
  if (word != nullptr) state().data_word = *word;
  const std::int64_t result = ended_by_plugin ? 1 : 0;
  log_call_result(call, result);
  return result;
}

std::string action_event(const DialogAction& action) {
  using Kind = DialogAction::Kind;
  switch (action.kind) {
    case Kind::Click:
      return "click " + std::to_string(action.control);
    case Kind::ChooseStyle:
      return "choose style \"" + action.text + "\"";
    case Kind::ChooseRow:
      return "choose row " +
             (action.text.empty() ? std::to_string(action.row) : "\"" + action.text + "\"") +
             " of " + std::to_string(action.control);
    case Kind::Close:
      return "close";
    case Kind::RemoveGrooveFile:
      return "remove groove file \"" + action.text + "\"";
  }
  return "?";
}

std::string remove_groove_file(const std::string& name) {
  const auto& folder = state().groove_folder;
  if (!folder) return "no groove folder";
  const fs::path file = fs::u8path(*folder) / fs::u8path(name);
  std::error_code error;
  if (!fs::is_regular_file(file, error)) return "no such file";
  if (!fs::remove(file, error)) return "not removed: " + error.message();
  return {};
}

}  // namespace cantel_engine
