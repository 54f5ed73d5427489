// The options of commands: one row per option.
#pragma once

/// How the value of an option is read.
enum class EValue {
    None,       ///< a flag without a value
    Text,       ///< any text
    Date,       ///< ISO, from 1601 on
    Time,       ///< "HH:MM"
    Number,     ///< a number with a point, within the option's limits
    Whole,      ///< a whole number within the option's limits
    Choice,     ///< one of the choices, compared without case
    Code,       ///< one of the choices, or its index from 0 on
    Choices,    ///< several of the choices, separated by commas
    Nutrients,  ///< indexes or exchange names of nutrients, separated by commas; may be empty
    Target,     ///< index or exchange name of a nutrient, "=" and a number within the limits
};

enum class ENeed { Optional, Required, Repeatable };

// The order is that of the columns of the tables.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding)
struct COption {
    const char* name;  ///< with its dashes, "--height"
    EValue kind;
    const char* value;  ///< placeholder in help, "CM", or the choices, "male|female"
    const char* help;   ///< what it is, in one line
    double low = 0;     ///< inclusive limits of a Number, Whole or Target
    double high = 0;
    ENeed need = ENeed::Optional;
    /// An option that excludes this one, and replaces it where it is required.
    const char* rival = nullptr;
};

constexpr COption Required(COption option) {
    option.need = ENeed::Required;
    return option;
}

// Options of many commands.
inline constexpr COption kProfileOption = {"--profile", EValue::Text, "NAME", "the user profile"};
inline constexpr COption kDateOption = {"--date", EValue::Date, "DATE", "the day"};
inline constexpr COption kTimeOption = {"--time", EValue::Time, "HH:MM", "the time of day"};
inline constexpr COption kFromOption = {"--from", EValue::Date, "DATE", "the first day"};
inline constexpr COption kToDateOption = {"--to", EValue::Date, "DATE", "the last day"};
inline constexpr COption kCategoryOption = {"--category", EValue::Text, "CATEGORY",
                                            "the category's name"};
inline constexpr COption kNameOption = {"--name", EValue::Text, "NAME", "the item's name"};
inline constexpr COption kTypeOption = {"--type", EValue::Text, "TYPE", "the item's type"};

/// For commands that delete. Without this option their questions are answered with No; the
/// questions of all other commands are answered with Yes.
inline constexpr COption kYesOption = {"--yes", EValue::None, "", "delete without asking"};

/// Options of every command, anywhere on the line.
inline constexpr COption kCommonOptions[] = {
    {"--volume", EValue::Text, "FILE", "the data file to use instead of the default one"},
    {"--help", EValue::None, "", "explain the command, or list all commands"},
    {"--version", EValue::None, "", "print the version"},
};
