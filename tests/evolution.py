"""What scripts/try-evolution does besides building: appends fields to a definition, and has two tools read each other."""
import json
import re
import subprocess
import sys

# What gets a field at its end: messages, and records that end one. The value that is sent in it, and its zero.
APPENDED = {
    "MktDataMessage": ("int64", "1234567890123456", "0"),
    "OrderSubmittedMessage": ("price", "108450000", "0"),
    "SubmitOrderMessage": ("string", "appended", ""),
    "OrderReceived": ("Side", "BID", 0),
    "TradeCaptureMessage": ("bool", True, False),
    "DropCopyMessage": ("string[]", ["one", "two"], []),
    "MassQuoteAck": ("uint32_fixed", 7, 0),
    "QuoteRequest": ("float8", 0.25, 0),
    "OrderCanceledMessage": ("FeedMarketID", {"marketID": 1, "feedID": 2}, {"marketID": 0, "feedID": 0}),
    "LogMessage": ("cryptstring", "secret", ""),
}


def append(source, target):
    with open(source, encoding="utf-8") as file:
        xml = file.read()
    for name, (type_, *_) in APPENDED.items():
        field = f'  <field name="appended" type="{type_}" doc="added later"/>\n  '
        xml, count = re.subn(rf'(<(record|message) name="{name}" .*?)(</\2>)', rf"\1{field}\3", xml, count=1, flags=re.S)
        assert count == 1, name
    with open(target, "w", encoding="utf-8") as file:
        file.write(xml)


def run(*command, **options):
    result = subprocess.run(command, check=False, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, **options)
    assert result.returncode == 0, (command, result.returncode, result.stderr[:1000])
    return result.stdout


def lines(tool, capture):
    """The messages of a capture. Bytes that another definition would write otherwise stand in them besides."""
    text = run(tool, "decode", "--policy", "rolling", "--format", "json", capture)
    return [json.loads(line) for line in text.splitlines()]


def extended(line):
    """The name under which the message got a field, and what holds the field; nothing if it got none."""
    contents = line["body"].get("contents")
    if line["message"] in APPENDED:
        return line["message"], line["body"]
    name = line["message"].removesuffix("Message")
    return (name, contents) if name in APPENDED else (None, None)


def without_hex(line):
    return {name: value for name, value in line.items() if name != "hex"}


def try_both(old, new, folder, count):
    old_capture, new_capture = f"{folder}/old.pcap", f"{folder}/new.pcap"
    run(old, "generate", "--messages", count, "--seed", "7", "-o", old_capture)
    written, sent = lines(old, old_capture), []
    assert len(written) == int(count)

    for before, after in zip(written, lines(new, old_capture), strict=True):
        name, holder = extended(after)
        if name is not None:
            value = holder.pop("appended")
            assert value == APPENDED[name][2], (name, value)
            assert without_hex(before) == without_hex(after), (before, after)
            after.pop("hex")
            holder["appended"] = APPENDED[name][1]
        else:
            assert before == after, (before, after)
        sent.append(after)
    touched = sum(extended(line)[0] is not None for line in sent)
    kinds = {extended(line)[0] for line in sent} - {None}
    assert kinds == set(APPENDED), kinds
    print(f"old bodies at the new tool: {len(written)} read, {touched} with a field of zero besides, nothing else changed")

    run(new, "encode", "-", "-o", new_capture, input="".join(json.dumps(line) + "\n" for line in sent))
    assert lines(new, new_capture) == sent
    for before, after in zip(written, lines(old, new_capture), strict=True):
        assert without_hex(before) == without_hex(after), (before, after)
    print(f"new bodies at the old tool: {len(sent)} read, {touched} of them longer, nothing changed")

    for tool, capture in (old, new_capture), (new, old_capture):
        refused = subprocess.run([tool, "verify", capture], check=False, stdout=subprocess.PIPE, text=True)
        assert refused.returncode == 1
        print(f"without the policy: {re.search('all packets.*', refused.stdout)[0]} (sound, bad)")


if __name__ == "__main__":
    {"append": append, "try": try_both}[sys.argv[1]](*sys.argv[2:])
