#pragma once

#include <cstdint>
#include <string>

// Parts that are opened at run time, when they are first needed: what they link takes long to load,
// or may not be there. Each exports one C function, which hands over its table of functions.
namespace korvex::platform {

// The table that a plug-in's function answers for a version of the table's form; null for a version
// that the plug-in doesn't have.
using PluginTable = const void* (*)(std::int32_t version);

// Opens the plug-in, which stays until the process ends, and answers its table. Null when it is
// missing or does not fit; `reason` then says which, for a person. A later call tries again.
const void* load_plugin(const std::string& path, const char* function, std::int32_t version,
                        std::string& reason);

// The folder of the library that the code is in, wherever a link to it may lie; never the
// working folder. Empty when it is unknown.
std::string library_folder(const void* code);

// The same for the program that runs.
std::string program_folder();

}  // namespace korvex::platform
