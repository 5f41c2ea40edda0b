// What the reference host knows beside the drawing: macro variables, messages, abort, language, dialogs.
#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace host {

/// A dialog mask of the host, as far as anyone can see it without a screen.
struct DialogMask {
    std::string name;
    int x = 0, y = 0;
    int shown = 0; ///< how many times
};

struct Session {
    std::map<std::string, double> numbers;             ///< "&Name"
    std::map<std::string, std::string> texts;          ///< "$Name"
    std::vector<std::string> messageArea;              ///< lines of ovwritealpha and CiOutput::String
    std::vector<std::pair<std::string, int>> errors;   ///< of ErrClassErrType: place and number
    std::string statusLine;                            ///< last text of ovdisplay
    std::function<void(const std::string&)> onStatus;  ///< told of each status text
    std::function<void(const std::string&)> onMessage; ///< told of each message line
    std::function<bool()> wantsAbort;                  ///< asked by UoCheckAbort(16)
    std::size_t maxElements = 50'000'000; ///< more elements than this in the drawing count as an abort
    bool elementLimitHit = false;         ///< maxElements has stopped a run
    std::size_t idleQuestions = 0;        ///< UoCheckAbort(16) asked so often while the drawing didn't grow
    std::size_t elementsWhenAsked = 0;    ///< elements of the drawing at the last such question
    std::string language = "de";          ///< of the message catalogue
    /// Folders with cad_msg.<language>.txt, the first that has it counts; empty: the installation data under
    /// $HD_U/$HD_VE.
    std::vector<std::string> cataloguePaths;
    std::string fileDialogAnswer;     ///< what CiInput::SelectFileName gives; empty: the user refuses
    std::vector<std::string> dialogs; ///< texts of GoDoShowInformationEx: title, heading and text by line
    /// The masks that there are; the id of a mask is its index + 1.
    std::vector<DialogMask> masks{{"dxf_load"}, {"dxf_store"}, {"DxfTrans"}};
    std::map<std::string, std::string> partner; ///< "section/group/key" → text
    int pen = 1, lineType = 1;
    /// External DWG converter, empty: none. A program and its arguments, parted by blanks; the source and the
    /// target follow as two more arguments. No shell sees them. Its exit status 0 is success.
    std::string dwgConverter;
};

Session& session();
void resetSession(); ///< Back to the start of the program; the drawing too.

} // namespace host
