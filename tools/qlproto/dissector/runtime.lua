-- The fixed part of the dissector. In front of it stand, made from the protocol, the tables
--
--   protocol      { name = "QLProtocol", prefix = "ql", keys = "names of the fields that tell most" }
--   enumerations  NAME = { [number] = "ENUMERATOR", ... }
--   records       NAME = { size = fewest bytes on the wire, { "field", "type" }, ... }
--   messages      { id = identifier, name = "NAME", { "field", "type", secret = true or absent }, ... }
--   framing       nil, or how messages stand in streams and datagrams: a row { before = bytes in front of the body,
--                 after = bytes after it, lengthEnd = where the length ends or 0, around = what it counts besides the body,
--                 { kind = "constant" | "length" | "id" | "sequence" | "count" | "skip", at = place, size = bytes,
--                 isHighFirst = true or false, value = of a constant }, ... , messages = nil or the row of one message }
--   ports         of TCP and UDP that are framed so
--
-- with types as the protocol's definition spells them: "int64", "Side", "KeyValuePair[]".
--
-- Filter names: PREFIX.<message>.<field>, the message in lower case without its ending "Message". Where a message holds
-- several fields of a name, the names of the records around it stand in front, as few as tell them apart:
-- PREFIX.mktdata.fmID.marketID. A vector v has its number of elements as v.count; v itself names its elements.
--
-- Numbers in Lua are doubles, exact up to 2^53. 64-bit values therefore are pairs of 32 bits, low and high, until they
-- become an Int64.

local byte, char, floor = string.byte, string.char, math.floor
local bxor = (bit32 or bit).bxor

local PREFIX = protocol.prefix .. "."
local analyser = Proto(protocol.prefix, protocol.name)

local identifiers = {}
for _, message in ipairs(messages) do identifiers[message.id] = message.name end
local idField = ProtoField.uint16(PREFIX .. "id", "Identifier", base.HEX, identifiers)
local nameField = ProtoField.string(PREFIX .. "message", "Message")
local all = { idField, nameField }

local function expertInfo(name, text)
    return ProtoExpert.new(PREFIX .. name, text, expert.group.MALFORMED, expert.severity.ERROR)
end
local truncated = expertInfo("truncated", "The body ends inside a value")
local countBeyondBytes = expertInfo("countbeyondbytes", "More elements than the remaining bytes can hold")
local trailingBytes = expertInfo("trailingbytes", "Bytes after the last value")
local unknownIdentifier = expertInfo("unknownidentifier", "No message has this identifier")
local cutByCapture = ProtoExpert.new(PREFIX .. "cutbycapture", "The capture holds only a part of the packet",
                                     expert.group.UNDECODED, expert.severity.WARN)
analyser.experts = { truncated, countBeyondBytes, trailingBytes, unknownIdentifier, cutByCapture }

-- Fields whose values go into the Info column, unless they are secret or lie in a vector.
local keyFields = {}
for name in protocol.keys:gmatch("[%w_]+") do
    keyFields[name] = true
end
local MOST_KEYS = 8

-- ---------------------------------------------------------------------------------------------------------------------
-- The packet at hand. Positions are those of Lua strings: the first byte is 1.

local tvb        -- the packet
local data       -- its bytes
local pos        -- of the next byte
local current    -- the field being read, for reports
local summary    -- texts for the Info column

-- Ends the dissection of the packet.
local function fault(info, text) error({ info = info, text = text }, 0) end

local function endsInside() fault(truncated, ("truncated at byte %d (%s)"):format(#data, current.path)) end

local function nextByte()
    local b = byte(data, pos) or endsInside()
    pos = pos + 1
    return b
end

-- A varint's bits from the sixth byte on lie in the high half; the fifth byte is shared.
local LOW = { 2 ^ 7, 2 ^ 14, 2 ^ 21 }
local HIGH = { [5] = 2 ^ 3, [6] = 2 ^ 10, [7] = 2 ^ 17, [8] = 2 ^ 24 }

-- A plain varint of any length as low and high 32 bits. Bits beyond 64 are dropped.
local function varint()
    local b = nextByte()
    if b < 128 then return b, 0 end
    local low, high, i = b - 128, 0, 0
    repeat
        b = nextByte()
        i = i + 1
        local bits = b % 128
        if i < 4 then
            low = low + bits * LOW[i]
        elseif i == 4 then
            low = low + bits % 16 * 2 ^ 28
            high = floor(bits / 16)
        elseif i < 9 then
            high = high + bits * HIGH[i]
        elseif i == 9 then
            high = high + bits % 2 * 2 ^ 31
        end
    until b < 128
    return low, high
end

local function unzigzag(u)
    if u % 2 == 0 then return u / 2 end
    return -(u + 1) / 2
end

-- `count` bytes as a number, the low one first.
local function fixed(count)
    local value = 0
    for i = 0, count - 1 do value = value + nextByte() * 256 ^ i end
    return value
end

local function fixed64()
    local low = fixed(4)
    return low, fixed(4)
end

local function int16() return unzigzag(varint() % 2 ^ 16) end

local function int32() return unzigzag((varint())) end

local function int64()
    local low, high = varint()
    local odd = low % 2
    low = floor(low / 2) + high % 2 * 2 ^ 31
    high = floor(high / 2)
    if odd == 1 then return 2 ^ 32 - 1 - low, 2 ^ 32 - 1 - high end
    return low, high
end

local SENTINEL_BYTES = { [3] = 1, [5] = 2, [7] = 3 } -- NMA, NDA and NA are 2^63 and so much

-- The special varint: five bits in the first byte, the rest as a varint. Bit 1 complements; no writer of ours sets it.
local function price()
    local first = nextByte()
    local sentinel = SENTINEL_BYTES[first]
    if sentinel then return sentinel, 2 ^ 31 end
    local low, high = floor(first / 4) % 32, 0
    if first >= 128 then
        local restLow, restHigh = varint()
        low = low + restLow % 2 ^ 27 * 32
        high = restHigh % 2 ^ 27 * 32 + floor(restLow / 2 ^ 27)
    end
    if floor(first / 2) % 2 == 1 then return 2 ^ 32 - 1 - low, 2 ^ 32 - 1 - high end
    return low, high
end

local function sentinelName(low, high)
    if high == 2 ^ 31 then return low == 1 and "NMA" or low == 2 and "NDA" or low == 3 and "NA" or nil end
    if high == 2 ^ 31 - 1 and low == 2 ^ 32 - 2 then return "MAX" end
end

-- The keystream that enciphers strings: splitmix64 of the block's number, top bits set. The key is 0. Always the same,
-- so it is made once, as far as it was needed.
local keystream = {}
local CIPHER_STEP = UInt64.new(0x7F4A7C15, 0x9E3779B9)
local CIPHER_FACTOR_1 = UInt64.new(0x1CE4E5B9, 0xBF58476D)
local CIPHER_FACTOR_2 = UInt64.new(0x133111EB, 0x94D049BB)
local cipherState = UInt64.new(0, 0)

local function extendKeystream()
    cipherState = cipherState + CIPHER_STEP
    local keys = cipherState
    keys = keys:bxor(keys:rshift(30)) * CIPHER_FACTOR_1
    keys = keys:bxor(keys:rshift(27)) * CIPHER_FACTOR_2
    keys = keys:bxor(keys:rshift(31)):bor(UInt64.new(0x80808080, 0x80808080))
    for _, half in ipairs({ keys:lower(), keys:higher() }) do
        for _ = 1, 4 do
            keystream[#keystream + 1] = half % 256
            half = floor(half / 256)
        end
    end
end

local function decipher(text)
    while #keystream < #text do extendKeystream() end
    local plain = {}
    for i = 1, #text do plain[i] = char(bxor(byte(text, i), keystream[i])) end
    return table.concat(plain)
end

-- Text for a label, which must not hold NULs nor bytes above ASCII that are no UTF-8. Which those are is not told apart
-- here: a text with any such byte that the analyser's own decoding does not keep is shown by it.
local function isPlain(text) return not text:find("[%z\128-\255]") end

-- ---------------------------------------------------------------------------------------------------------------------
-- One function for each type: reads the value of a field and adds it to the tree.

local function range(from) return tvb(from - 1, pos - from) end

local function note(field, text)
    if field.isKey and #summary < MOST_KEYS then summary[#summary + 1] = field.name .. "=" .. text end
end

local function number(read)
    return function(field, tree)
        local from = pos
        local value = read()
        note(field, value)
        return tree:add(field.proto, range(from), value)
    end
end

local function number64(read)
    return function(field, tree)
        local from = pos
        local low, high = read()
        local value = Int64.new(low, high)
        local item = tree:add(field.proto, range(from), value)
        local name = sentinelName(low, high)
        if name then item:append_text(" (" .. name .. ")") end
        if field.isKey then note(field, name or tostring(value)) end
        return item
    end
end

-- The bytes of a string of that length; returns where they begin.
local function take(length)
    local from = pos
    if from + length - 1 > #data then endsInside() end
    pos = from + length
    return from
end

local function text(field, tree, length)
    local from = take(length)
    if field.isKey and length ~= 0 then note(field, data:sub(from, pos - 1)) end
    return tree:add_packet_field(field.proto, range(from), ENC_UTF_8)
end

local function uint64(field, tree)
    local from = pos
    local value = UInt64.new(varint())
    note(field, tostring(value))
    return tree:add(field.proto, range(from), value)
end

local function float(size)
    return function(field, tree)
        local bytes = range(take(size))
        note(field, tostring(bytes:le_float()))
        return tree:add_le(field.proto, bytes)
    end
end

local function blob(field, tree) return tree:add(field.proto, range(take(varint() % 2 ^ 16))) end

local function encipheredBlob(field, tree)
    local from = take(varint() % 2 ^ 16)
    if pos == from then return tree:add(field.proto, range(from)) end
    return tree:add(field.proto, ByteArray.new(decipher(data:sub(from, pos - 1)), true):tvb("Deciphered")())
end

local function enciphered(field, tree)
    local from = take(varint() % 2 ^ 16)
    local plain = decipher(data:sub(from, pos - 1))
    note(field, plain)
    if isPlain(plain) then return tree:add(field.proto, range(from), plain) end
    return tree:add_packet_field(field.proto, ByteArray.new(plain, true):tvb("Deciphered")(), ENC_UTF_8)
end

local readers = {
    bool = number(function() return nextByte() ~= 0 end),
    int8 = number(function()
        local b = nextByte()
        return b < 128 and b or b - 256
    end),
    int16 = number(int16),
    int32 = number(int32),
    int64 = number64(int64),
    int64_fixed = number64(fixed64),
    price = number64(price),
    uint8 = number(nextByte),
    uint16 = number(function() return varint() % 2 ^ 16 end),
    uint32 = number(function() return (varint()) end),
    uint64 = uint64,
    uint16_fixed = number(function() return fixed(2) end),
    uint32_fixed = number(function() return fixed(4) end),
    float4 = float(4),
    float8 = float(8),
    blob = blob,
    cryptblob = encipheredBlob,
    string_fixed = function(field, tree) return text(field, tree, fixed(2)) end,
    string = function(field, tree) return text(field, tree, varint() % 2 ^ 16) end,
    cryptstring = enciphered,
    -- Deliberate: shown as it is written, with a length of two bytes, although it is read with a varint one.
    padding = function(field, tree) return text(field, tree, fixed(2)) end,
}

local function enumeration(field, tree)
    local value = nextByte()
    note(field, field.enumerators[value] or value)
    return tree:add(field.proto, range(pos - 1), value)
end

local function members(fields, tree)
    for i = 1, #fields do
        local field = fields[i]
        current = field
        field.read(field, tree)
    end
end

local function record(field, tree)
    local from = pos
    local item = tree:add(field.proto, tvb(from - 1))
    members(field.members, item)
    item:set_len(pos - from)
    return item
end

local function vector(field, tree)
    local from = pos
    local count = nextByte()
    if count >= 128 then count = count % 128 * 256 + nextByte() end
    local item = tree:add(field.count, range(from), count)
    local left = #data - pos + 1
    if count * field.elementSize > left then
        fault(countBeyondBytes, ("%d elements at byte %d (%s) cannot be in the remaining %d bytes")
                                    :format(count, from - 1, field.path, left))
    end
    for i = 0, count - 1 do
        current = field
        field.readElement(field, item):prepend_text("[" .. i .. "] ")
    end
    item:set_len(pos - from)
    return item
end

-- ---------------------------------------------------------------------------------------------------------------------
-- From the tables to fields that can be read and filtered.

local protoFields = {
    bool = ProtoField.bool, int8 = ProtoField.int8, int16 = ProtoField.int16, int32 = ProtoField.int32,
    uint8 = ProtoField.uint8, uint16 = ProtoField.uint16, uint32 = ProtoField.uint32, uint64 = ProtoField.uint64,
    uint16_fixed = ProtoField.uint16, uint32_fixed = ProtoField.uint32, int64_fixed = ProtoField.int64,
    float4 = ProtoField.float, float8 = ProtoField.double, blob = ProtoField.bytes, cryptblob = ProtoField.bytes,
    string_fixed = ProtoField.string,
    int64 = ProtoField.int64, price = ProtoField.int64, string = ProtoField.string, cryptstring = ProtoField.string,
    padding = ProtoField.string,
}

-- Fewest bytes of what takes more than one.
local sizes = { uint16_fixed = 2, string_fixed = 2, uint32_fixed = 4, float4 = 4, int64_fixed = 8, float8 = 8 }

-- The fields of a message or record, with the path from the message to each. All that get a filter name are gathered.
-- `outer` is the field that holds them: what lies in a vector or is secret goes on to all that it holds.
local function build(entries, path, outer, named)
    local fields = {}
    for i, entry in ipairs(entries) do
        local name, typeName = entry[1], entry[2]
        local elementType = typeName:match("^(.*)%[%]$")
        local field = {
            name = name, path = path .. name, inVector = outer.inVector or elementType ~= nil,
            isSecret = outer.isSecret or entry.secret
        }
        fields[i] = field
        named[#named + 1] = field

        local kind = elementType or typeName
        local read = readers[kind]
        if records[kind] then
            field.members = build(records[kind], field.path .. ".", field, named)
            field.kind = "record"
            read = record
        elseif enumerations[kind] then
            field.enumerators = enumerations[kind]
            field.kind = "enumeration"
            read = enumeration
        else
            field.kind = kind
        end
        field.read = read
        if elementType then
            field.read, field.readElement = vector, read
            field.elementSize = field.members and records[kind].size or sizes[kind] or 1
            field.counted = { path = field.path .. ".count", countOf = field }
            named[#named + 1] = field.counted
        end
        field.isKey = keyFields[name] and not field.inVector and not field.members and not field.isSecret
    end
    return fields
end

-- The endings of a path, shortest first: "price", "mdEntryList.price", "contents.mdEntryList.price".
local function endings(path)
    local result = {}
    local from = #path + 1
    while from > 1 do
        from = path:sub(1, from - 1):match(".*()%.") or 0
        from = from + 1
        result[#result + 1] = path:sub(from)
        from = from - 1
    end
    return result
end

local function register(prefix, named)
    local uses = {}
    for _, field in ipairs(named) do
        for _, ending in ipairs(endings(field.path)) do uses[ending] = (uses[ending] or 0) + 1 end
    end
    for _, field in ipairs(named) do
        local filter = field.path
        for _, ending in ipairs(endings(field.path)) do
            if uses[ending] == 1 then
                filter = ending
                break
            end
        end
        filter = prefix .. filter
        local proto
        if field.countOf then
            proto = ProtoField.uint16(filter, field.countOf.name, base.DEC, nil, nil, "Number of elements")
            field.countOf.count = proto
        elseif field.kind == "record" then
            proto = ProtoField.none(filter, field.name)
        elseif field.kind == "enumeration" then
            proto = ProtoField.uint8(filter, field.name, base.DEC, field.enumerators)
        else
            proto = protoFields[field.kind](filter, field.name)
        end
        if not field.countOf then field.proto = proto end
        all[#all + 1] = proto
    end
end

-- The name of a message in filters, if no other has it.
local shortNames = {}
local function shortName(message)
    local name = message.name:gsub("Message$", ""):lower()
    if name == "" or shortNames[name] then name = message.name end
    shortNames[name] = true
    return name
end

local byIdentifier = {}
for _, message in ipairs(messages) do
    local named = {}
    byIdentifier[message.id] = { name = message.name, fields = build(message, "", {}, named) }
    register(PREFIX .. shortName(message) .. ".", named)
end
analyser.fields = all

-- ---------------------------------------------------------------------------------------------------------------------

local function dissectBody(message, tree)
    members(message.fields, tree)
    local left = #data - pos + 1
    if left ~= 0 then fault(trailingBytes, ("%d bytes left over after the last value"):format(left)) end
end

local function dissect(tree)
    current = { path = "identifier" }
    local low = nextByte()
    local id = low + 256 * nextByte()
    local message = byIdentifier[id]
    tree:add_le(idField, tvb(0, 2))
    if not message then fault(unknownIdentifier, ("unknown message identifier 0x%04X"):format(id)) end
    tree:add(nameField, tvb(0, 2), message.name):set_generated()
    tree:append_text(", " .. message.name)
    summary.name = message.name
    dissectBody(message, tree)
end

-- Shows a message, identifier and body; returns what the Info column says of it.
local function show(buffer, root)
    tvb, pos, summary = buffer, 1, {}
    data = buffer:raw()
    local tree = root:add(analyser, buffer())

    local fine, problem = pcall(dissect, tree)
    local line = summary.name or "?"
    if #summary > 0 then line = line .. " " .. table.concat(summary, " ") end
    if not fine then
        if type(problem) ~= "table" then error(problem, 0) end -- an error of this script, not of the packet
        local cut = buffer:captured_len() < buffer:reported_len()
        tree:add_proto_expert_info(cut and problem.info == truncated and cutByCapture or problem.info, problem.text)
        line = line .. " [" .. problem.text .. "]"
    end
    tvb, data = nil, nil
    return line
end

function analyser.dissector(buffer, info, root)
    info.cols.protocol = protocol.name
    info.cols.info = show(buffer, root)
end

DissectorTable.get("wtap_encap"):add(wtap.USER0, analyser)

-- ---------------------------------------------------------------------------------------------------------------------
-- Messages in streams and datagrams, as the framing has them.

if framing then
    local LONGEST = 262144 + 4096 -- bytes of a frame: what says that it has more is none

    local function numberAt(buffer, at, field)
        local bytes = buffer(at + field.at, field.size)
        if field.size == 8 then return (field.isHighFirst and bytes:uint64() or bytes:le_uint64()):tonumber() end
        return field.isHighFirst and bytes:uint() or bytes:le_uint()
    end

    -- The row of fields at a place, in front of `last`, where a datagram or frame ends; a stream, nil, may go on. Returns
    -- the row's values, or "more" if bytes are lacking, or nil if it does not fit.
    local function rowAt(row, buffer, at, last)
        if at + row.before > buffer:len() then
            if last then return nil end
            return "more"
        end
        local it = { at = at, begin = at + row.before, count = 0 }
        for _, field in ipairs(row) do
            local value = numberAt(buffer, at, field)
            if field.kind == "constant" and value ~= field.value then return nil end
            it[field.kind] = value
        end
        if row.lengthEnd ~= 0 then
            local body = it.length - row.around
            if body < 0 or body > LONGEST then return nil end
            it.last = it.begin + body
        elseif last then
            it.last = last - row.after
        else
            return nil
        end
        it.size = it.last + row.after - at
        if last and it.last + row.after > last then return nil end
        return it
    end

    local function showMessage(buffer, it, root)
        local id = it.id
        if id > 65535 then return "?" end
        local idField = it.idField
        local isInPlace = idField and idField.size == 2 and not idField.isHighFirst and it.idEnd == it.begin
        if isInPlace then return show(buffer(it.begin - 2, it.last - it.begin + 2):tvb(), root) end
        local bytes = char(id % 256, floor(id / 256))
        if it.last > it.begin then bytes = bytes .. buffer:raw(it.begin, it.last - it.begin) end
        return show(ByteArray.new(bytes, true):tvb("Message"), root)
    end

    local inner = framing.messages or framing
    local idField
    for _, field in ipairs(inner) do
        if field.kind == "id" then idField = field end
    end

    -- Shows the messages of a frame; returns what the Info column says of them.
    local function showFrame(buffer, frame, root)
        local lines = {}
        local at, number = frame.begin, 0
        while at < frame.last or number == 0 do
            local it = frame
            if framing.messages then
                if frame.count ~= 0 and number == frame.count then break end
                it = rowAt(inner, buffer, at, frame.last)
                if not it then break end
                at = at + it.size
            else
                at = frame.last
            end
            it.idField, it.idEnd = idField, it.at + idField.at + idField.size
            number = number + 1
            lines[number] = showMessage(buffer, it, root)
            if not framing.messages then break end
        end
        return table.concat(lines, "; ")
    end

    local framed = Proto(protocol.prefix .. "framed", protocol.name .. " in frames")
    local noFrame = ProtoExpert.new(PREFIX .. "noframe", "No frame begins here", expert.group.MALFORMED,
                                    expert.severity.ERROR)
    framed.experts = { noFrame }

    local function isDatagram(info) return info.port_type == 3 end -- PT_UDP

    function framed.dissector(buffer, info, root)
        local at, length, lines = 0, buffer:len(), {}
        local last = isDatagram(info) and length or nil
        info.cols.protocol = protocol.name
        while at < length do
            local frame = rowAt(framing, buffer, at, last)
            if frame == nil then
                root:add(framed, buffer(at)):add_proto_expert_info(noFrame)
                break
            end
            if frame == "more" or at + frame.size > length then
                if last or info.can_desegment == 0 then break end
                info.desegment_offset = at
                info.desegment_len = frame == "more" and DESEGMENT_ONE_MORE_SEGMENT or at + frame.size - length
                break
            end
            lines[#lines + 1] = showFrame(buffer, frame, root)
            at = at + frame.size
        end
        if #lines > 0 then info.cols.info = table.concat(lines, "; ") end
        return length
    end

    for _, transport in ipairs({ "tcp", "udp" }) do
        local known = DissectorTable.get(transport .. ".port")
        for _, port in ipairs(ports) do known:add(port, framed) end
        if #ports == 0 then known:add_for_decode_as(framed) end
    end
end
