// Reads Parquet with a reader that is not the engine that wrote it: for each row of SubmitOrder time, order, side and amount.
import { readFileSync } from "node:fs";
import { createRequire } from "node:module";

const require = createRequire(import.meta.url);
const parquet = require("parquet-wasm");
const { tableFromIPC } = require("apache-arrow");

for (const file of process.argv.slice(2)) {
    const table = tableFromIPC(parquet.readParquet(readFileSync(file)).intoIPCStream());
    const contents = table.getChild("contents"), times = table.getChild("_time").toArray();
    for (let i = 0; i < table.numRows; ++i) {
        const order = contents.get(i);
        console.log(`${times[i]},${order.clOrdID},${order.side},${order.amount}`);
    }
}
