// What the two ways of running a plug-in dialog (the model on POSIX, the
// real dialog on Windows) do alike: the log of the plug-in's dialog calls,
// the names of the scripted steps, and the user who removes a groove file
// while the dialog is open.
#ifndef CANTEL_ENGINE_DIALOG_SHARED_H
#define CANTEL_ENGINE_DIALOG_SHARED_H

#include <cstdint>
#include <initializer_list>
#include <string>

#include "cantel_engine/document.h"

namespace cantel_engine {

// A pointer argument as the call log shows it: whether it was given.
std::int64_t given(const void* pointer);

// Appends a call to the log and returns its index there.
std::size_t log_call(const char* fn, bool own_dialog, std::initializer_list<std::int64_t> args,
                     std::uint32_t version);
void log_call_result(std::size_t index, std::int64_t result);
// CX_Dialog itself, logged first; once its dialog has ended, the data word
// is kept and the call's result logged (1 when the plug-in ended it).
std::size_t log_dialog_call(std::uint16_t id, const void* procedure, const std::uint32_t* word,
                            std::uint16_t mode, const void* instance, std::uint32_t version);
std::int64_t dialog_ended(std::size_t call, const std::uint32_t* word, bool ended_by_plugin);

// "click 1", "choose style \"Rock\"", "choose row 2 of 1019", ...
std::string action_event(const DialogAction& action);

// Removes the file from the groove folder; the step's note: empty, or why
// nothing was removed.
std::string remove_groove_file(const std::string& name);

}  // namespace cantel_engine

#endif
