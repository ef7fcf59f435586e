#pragma once

#include <nlohmann/json.hpp>

#include <regex>
#include <stdexcept>
#include <string>
#include <vector>

namespace desk::test {

/// Checks JSON against a JSON Schema with the few keywords that docs/edid_report.schema.json uses; any other keyword
/// throws.
class json_schema {
public:
    using json = nlohmann::json;

    explicit json_schema(json schema) : schema_(std::move(schema)) {}

    /// What is wrong, a line each with its path; empty if nothing is.
    std::string faults_of(const json& value) const {
        std::string faults;
        check(schema_, value, "", faults);
        return faults;
    }

private:
    static bool has_type(const json& value, const std::string& type) {
        if (type == "integer") return value.is_number_integer() || value.is_number_unsigned();
        if (type == "number") return value.is_number();
        if (type == "null") return value.is_null();
        if (type == "string") return value.is_string();
        if (type == "boolean") return value.is_boolean();
        if (type == "array") return value.is_array();
        if (type == "object") return value.is_object();
        throw std::runtime_error("the schema has the type " + type);
    }

    static bool has_one_type(const json& value, const json& types) {
        if (types.is_string()) return has_type(value, types);
        for (const json& type : types)
            if (has_type(value, type)) return true;
        return false;
    }

    static void check(const json& schema, const json& value, const std::string& path, std::string& faults) {
        for (const auto& [keyword, rule] : schema.items())
            if (!holds(keyword, rule, schema, value, path, faults))
                faults += path + ": " + keyword + " " + rule.dump() + " does not hold for " + value.dump() + "\n";
    }

    static bool holds(const std::string& keyword, const json& rule, const json& schema, const json& value,
                      const std::string& path, std::string& faults) {
        if (keyword == "description" || keyword == "title" || keyword == "$schema") return true;
        if (keyword == "type") return has_one_type(value, rule);
        if (keyword == "enum") return std::find(rule.begin(), rule.end(), value) != rule.end();
        if (keyword == "minimum") return !value.is_number() || value >= rule;
        if (keyword == "maximum") return !value.is_number() || value <= rule;
        if (keyword == "minItems") return !value.is_array() || value.size() >= rule.get<std::size_t>();
        if (keyword == "maxItems") return !value.is_array() || value.size() <= rule.get<std::size_t>();
        if (keyword == "pattern")
            return !value.is_string() ||
                   std::regex_search(value.get<std::string>(), std::regex(rule.get<std::string>()));
        if (keyword == "items") {
            if (value.is_array())
                for (std::size_t i = 0; i < value.size(); ++i)
                    check(rule, value[i], path + "/" + std::to_string(i), faults);
            return true;
        }
        if (keyword == "required") {
            for (const json& name : rule)
                if (value.is_object() && !value.contains(name.get<std::string>())) return false;
            return true;
        }
        if (keyword == "properties") {
            for (const auto& [name, property] : rule.items())
                if (value.is_object() && value.contains(name)) check(property, value[name], path + "/" + name, faults);
            return true;
        }
        if (keyword == "additionalProperties" && rule == false) {
            if (value.is_object())
                for (const auto& [name, member] : value.items())
                    if (!schema["properties"].contains(name)) return false;
            return true;
        }
        throw std::runtime_error("the schema has the keyword " + keyword);
    }

    json schema_;
};

} // namespace desk::test
