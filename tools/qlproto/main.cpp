// qlproto: writes and reads captures of the protocol. The commands for any protocol, and those for trading.
#include "tools/qlproto/commands/Commands.h"

int main(int argc, char** argv) {
    using namespace qlproto;
    static constexpr AddCommand all[] = {
        addGenerate, addDecode,          addEncode,          addVerify,   addRoundTrip, addStats,    addLatency,
        addTrace,    qlproto::addOrders, qlproto::addQuotes, addQuery,    addExport,    addDiff,     addConvert,
        addSlice,    addScrub,           addMerge,           addReplay,   addPublish,   addRecord,   addTap,
        addWatch,    addMetrics,         addReport,          addAnnotate, addMessages,  addDescribe, addEnum,
        addTemplate, addIndex,           addSchema,          addCorpus,   addDissector, addManual};
    return runTool(argc, argv, all);
}
