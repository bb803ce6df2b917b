#include "orxdef/Schema.h"

#include <limits>
#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

#include "commands/Vocabulary.h"
#include "orxdef/DaemonCommands.h"

namespace orx::orxdef {
namespace {

using Json = nlohmann::ordered_json;

constexpr auto schemaVersion = "http://json-schema.org/draft-07/schema#";

Json reference(const std::string& name) {
    return {{"$ref", "#/definitions/" + name}};
}

Json described(Json schema, const std::string& text) {
    schema["description"] = text;
    return schema;
}

Json integer(std::int64_t least, std::int64_t greatest) {
    return {{"type", "integer"}, {"minimum", least}, {"maximum", greatest}};
}

template <typename Number>
Json anyOf() {
    return integer(std::numeric_limits<Number>::min(), std::numeric_limits<Number>::max());
}

Json number() {
    return {{"type", "number"}};
}

Json withDefault(Json schema, const Json& value) {
    schema["default"] = value;
    return schema;
}

/// A table that has these keys and no others.
Json table(const Json& properties, const Json& required = Json::array()) {
    Json schema{{"type", "object"}, {"additionalProperties", false}, {"properties", properties}};
    if (!required.empty()) schema["required"] = required;
    return schema;
}

Json arrayOf(const Json& items) {
    return {{"type", "array"}, {"items", items}};
}

/// Each byte as definitions write it: a backslash begins an escape, braces come in pairs.
constexpr auto bytePattern = R"([^\\{}]|\\x[0-9A-Fa-f]{2}|\\[rnt\\]|\{\{|\}\})";
constexpr auto placeholderPattern = R"(\{[1-9][0-9]*\})";

Json repeated(const std::string& pattern, const std::string& count) {
    return {{"type", "string"}, {"pattern", "^(" + pattern + ")" + count + "$"}};
}

Json bytes() {
    return repeated(bytePattern, "*");
}

Json bytesWithPlaceholders() {
    return repeated(std::string(bytePattern) + "|" + placeholderPattern, "*");
}

/// The argument types that are whole numbers.
Json integerArgument() {
    const Json types{{"enum", {"A", "B", "I", "X"}}};
    return table({{"type", described(types,
                                     "A: number filled up with zeros. B: the same with its "
                                     "sign. X: hexadecimal. I: raw bytes, highest first.")},
                  {"len", described(anyOf<std::uint8_t>(), "A, X: width. B: digits. I: bytes.")},
                  {"min", described(anyOf<std::int32_t>(), "Lower values are sent as this one.")},
                  {"max", described(anyOf<std::int32_t>(), "Higher values are sent as this one.")}},
                 {"type", "len", "min", "max"});
}

Json decimalArgument() {
    return table(
        {{"type", described({{"const", "D"}}, "Sign and decimal fraction.")},
         {"digits", described(integer(0, 15),
                              "Digits ahead of the point; 0: neither sign nor "
                              "filling, and decimals counts the significant digits.")},
         {"decimals", described(integer(0, 15),
                                "Digits behind the point; 0: one more digit in place of the "
                                "point.")},
         {"min", described(number(), "Lower values are sent as this one; in real units.")},
         {"max", described(number(), "Higher values are sent as this one; in real units.")}},
        {"type", "digits", "decimals", "min", "max"});
}

/// An entry of the binary file as it is; those of a model say to which command they belong.
Json descriptor(bool withId) {
    Json properties;
    if (withId) properties["id"] = anyOf<std::uint16_t>();
    properties["number"] = anyOf<std::uint16_t>();
    properties["type"] = {
        {"anyOf",
         {{{"type", "string"}, {"minLength", 1}, {"maxLength", 1}}, anyOf<std::uint8_t>()}}};
    properties["len"] = anyOf<std::uint8_t>();
    properties["pos"] = anyOf<std::uint8_t>();
    properties["min"] = anyOf<std::int32_t>();
    properties["max"] = anyOf<std::int32_t>();
    auto required = Json::array();
    for (const auto& [key, value] : properties.items())
        required.push_back(key);
    return table(properties, required);
}

Json simpleCommand() {
    return described(bytes(), R"(The bytes to send, in single quotes: \xNN \r \n \t \\ {{ }}.)");
}

Json commandWithArguments() {
    return table(
        {{"send", described(bytesWithPlaceholders(),
                            "The bytes to send, with {1}, {2} where the arguments stand.")},
         {"args", described(arrayOf(reference("argument")), "The first argument first.")}},
        {"send", "args"});
}

Json commandWithEntries() {
    return table({{"send", described(bytes(), "The bytes to send.")},
                  {"verbatim", described(arrayOf(descriptor(false)),
                                         "Entries of the definition file in place of args.")}},
                 {"send"});
}

Json commands() {
    Json properties;
    for (const auto& entry : vocabulary) {
        if (isForDaemon(entry.keyword)) continue;
        const bool hasArguments = entry.argumentKind != ArgumentKind::none;
        properties[std::string(entry.keyword)] = described(
            reference(hasArguments ? "command" : "commandWithoutArguments"),
            std::string(entry.symbolicName) +
                (hasArguments
                     ? ", with " + std::string(*argumentKindOf(entry.keyword)) + " arguments"
                     : ", without arguments"));
    }
    // Which other names there can be the whole document says.
    return {{"type", "object"},
            {"properties", properties},
            {"additionalProperties", reference("command")},
            {"description", "What the model is sent for each command of the vocabulary."}};
}

Json modelVerbatim() {
    return described(
        table({{"name", bytes()},
               {"bytesize", anyOf<std::uint8_t>()},
               {"stopbits", integer(0, 15)},
               {"parity", integer(0, 15)},
               {"checksum", anyOf<std::uint8_t>()},
               {"order", arrayOf({{"type", "string"}})},
               {"strings", arrayOf(table({{"id", anyOf<std::uint16_t>()}, {"bytes", bytes()}},
                                         {"id", "bytes"}))},
               {"descriptors", arrayOf(descriptor(true))},
               {"offset", anyOf<std::uint16_t>()},
               {"length", anyOf<std::uint16_t>()}}),
        "What the plain form cannot say; goes into the definition file unchecked.");
}

Json fileVerbatim() {
    const auto listed = table({{"id", anyOf<std::uint16_t>()}, {"name", bytes()}}, {"id", "name"});
    const auto filler =
        table({{"offset", integer(0, 1 << 20)}, {"bytes", bytes()}}, {"offset", "bytes"});
    return described(table({{"magic", repeated(bytePattern, "{6}")},
                            {"endiancheck", anyOf<std::uint8_t>()},
                            {"compiledate", anyOf<std::int32_t>()},
                            {"commands", arrayOf(listed)},
                            {"fillers", arrayOf(filler)},
                            {"commandlistlength", anyOf<std::uint16_t>()},
                            {"projectorlistlength", anyOf<std::uint16_t>()}}),
                     "What the plain form cannot say of the whole definition file.");
}

Json required(const Json& keys) {
    return {{"required", keys}};
}

/// A table whose table `verbatim` is as `schema` says.
Json inVerbatim(const Json& schema) {
    return {{"required", {"verbatim"}}, {"properties", {{"verbatim", schema}}}};
}

Json model() {
    const Json name{{"type", "string"}, {"minLength", 1}, {"maxLength", 255}};
    const Json parity{{"enum", {"none", "odd", "even"}}};
    const Json checksum{{"enum", {"none", "sum8"}}};
    auto schema = table(
        {{"name", described(name, "What the key projector of the configuration says.")},
         {"baudrate", described(anyOf<std::uint32_t>(), "Speed of the serial line in bit/s.")},
         {"bytesize", described(withDefault(integer(5, 8), 8), "Bits a character.")},
         {"parity", described(withDefault(parity, "none"), "Parity of the serial line.")},
         {"stopbits", described(withDefault(integer(1, 2), 1), "Stop bits.")},
         {"timeout", described(withDefault(anyOf<std::uint16_t>(), 100),
                               "How long the daemon waits for an answer, in milliseconds.")},
         {"delay", described(withDefault(anyOf<std::uint16_t>(), 0),
                             "Pause after each command, in milliseconds.")},
         {"checksum", described(withDefault(checksum, "none"),
                                "sum8: the sum of all bytes, modulo 256, as one more byte.")},
         {"commands", commands()},
         {"verbatim", modelVerbatim()}},
        {"baudrate"});
    schema["anyOf"] = {required({"name"}), inVerbatim(required({"name"}))};
    return schema;
}

/// The names that commands can have without an own command list.
Json usualNames() {
    auto names = Json::array();
    for (const auto& entry : vocabulary)
        names.push_back(entry.keyword);
    const Json commands{{"propertyNames", {{"enum", names}}}};
    const Json models{{"items", {{"properties", {{"commands", commands}}}}}};
    return {{"properties", {{"model", models}}}};
}

Json commandDefinitions() {
    auto withoutArguments = commandWithEntries();
    withoutArguments["properties"]["args"] = {{"type", "array"}, {"maxItems", 0}};
    return {
        {"model", model()},
        {"simpleCommand", simpleCommand()},
        {"command",
         {{"anyOf", {reference("simpleCommand"), commandWithArguments(), commandWithEntries()}}}},
        {"commandWithoutArguments", {{"anyOf", {reference("simpleCommand"), withoutArguments}}}},
        {"argument", {{"anyOf", {integerArgument(), decimalArgument()}}}}};
}

}  // namespace

int printSchema(std::ostream& output) {
    auto models = arrayOf(reference("model"));
    models["minItems"] = 1;
    const Json schema{
        {"$schema", schemaVersion},
        {"title", "Projector definitions of orx"},
        {"type", "object"},
        {"additionalProperties", false},
        {"minProperties", 1},
        {"properties", {{"model", models}, {"verbatim", fileVerbatim()}}},
        {"if", inVerbatim(required({"commands"}))},
        {"else", usualNames()},
        {"definitions", commandDefinitions()},
    };
    output << schema.dump(2) << '\n';
    return 0;
}

}  // namespace orx::orxdef
