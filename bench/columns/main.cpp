// Reads a table of a capture in record batches, as any consumer of Arrow does: what reading them costs by itself.
//
//     qlcolumns CAPTURE TABLE [COLUMN...]      all columns if none is named
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "Columns/Scan.h"
#include "Inspect/Values.h"

int main(int count, char** arguments) {
    if (count < 3) return 2;
    const std::vector<std::string> columns(arguments + 3, arguments + count);
    Columns::Request request{.table = arguments[2]};
    if (!columns.empty())
        request.options.takes = [&](Inspect::Path path) {
            return std::ranges::find(columns, Inspect::path_text(path)) != columns.end();
        };
    ArrowArrayStream stream;
    Columns::exportStream({arguments[1]}, Inspect::default_protocol(), std::move(request), stream);
    int64_t rows = 0;
    ArrowArray batch;
    while (stream.get_next(&stream, &batch) == 0 && batch.release != nullptr) {
        rows += batch.length;
        batch.release(&batch);
    }
    const bool isWhole = stream.get_last_error(&stream) == nullptr;
    stream.release(&stream);
    std::printf("%lld\n", static_cast<long long>(rows));
    return isWhole ? 0 : 1;
}
