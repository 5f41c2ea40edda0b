// What the reference host knows beside the drawing: macro variables, messages, abort, language, dialogs.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace host {

struct Session {
    std::map<std::string, double> numbers;             ///< "&Name"
    std::map<std::string, std::string> texts;          ///< "$Name"
    std::vector<std::string> messageArea;              ///< lines of ovwritealpha and CiOutput::String
    std::string statusLine;                            ///< last text of ovdisplay
    std::function<void(const std::string&)> onStatus;  ///< told of each status text
    std::function<void(const std::string&)> onMessage; ///< told of each message line
    std::function<bool()> wantsAbort;                  ///< asked by UoCheckAbort(16)
    std::size_t maxElements = 50'000'000;    ///< more elements than this in the drawing count as an abort
    bool elementLimitHit = false;            ///< maxElements has stopped a run
    std::string language = "de";             ///< of the message catalogue
    std::vector<std::string> cataloguePaths; ///< folders with cad_msg.<language>.txt
    std::string fileDialogAnswer;            ///< what CiInput::SelectFileName gives; empty: the user refuses
    std::vector<std::string> dialogs;        ///< texts of GoDoShowInformationEx
    std::map<std::string, std::string> partner; ///< "section/group/key" → text
    int pen = 1, lineType = 1;
    std::string dwgConverter; ///< command line for DWG conversion, empty: none
};

Session& session();
void resetSession(); ///< Back to the start of the program; the drawing too.

} // namespace host
