#include "tools/qlproto/Capture.h"
#include "tools/qlproto/Commands.h"
#include "tools/qlproto/session/Session.h"

namespace qlproto {

int generate(const GenerateOptions& options) {
    CaptureWriter writer(options.output);
    session::Session(options.seed, options.messages, writer).run();
    writer.close();
    return 0;
}

} // namespace qlproto
