#pragma once

#include <rapidcheck.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <string>

// How much an oracle plays. TESSI_ORACLE_STREAMS makes a long run, TESSI_ORACLE_SEED another one.
namespace tests::oracle {

inline constexpr unsigned long long kDefaultSeed = 20240301;

// Sanitizers slow the naive side down as well as what is tested; fewer streams still pass through every rule.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr int kSanitizerShare = 5;
#else
inline constexpr int kSanitizerShare = 1;
#endif

inline unsigned long long numberFrom(const char* variable, unsigned long long otherwise)
{
    const char* value = std::getenv(variable); // NOLINT(concurrency-mt-unsafe): nobody sets it
    return value ? std::stoull(value) : otherwise;
}

template <class Property>
void checkStreams(const char* description, int streams, const Property& property)
{
    rc::detail::TestMetadata metadata;
    metadata.id = metadata.description = description;
    rc::detail::TestParams params;
    params.seed = numberFrom("TESSI_ORACLE_SEED", kDefaultSeed);
    params.maxSuccess = static_cast<int>(
        numberFrom("TESSI_ORACLE_STREAMS", static_cast<unsigned long long>(streams / kSanitizerShare)));
    // Said beforehand, for the fault that ends the process.
    std::cerr << description << ": TESSI_ORACLE_SEED=" << params.seed << " TESSI_ORACLE_STREAMS=" << params.maxSuccess
              << std::endl;
    const auto result = rc::detail::checkTestable(property, metadata, params);
    if (!result.template is<rc::detail::SuccessResult>()) {
        rc::detail::printResultMessage(result, std::cerr);
        ADD_FAILURE() << description << ": again with TESSI_ORACLE_SEED=" << params.seed
                      << " TESSI_ORACLE_STREAMS=" << params.maxSuccess;
    }
}

} // namespace tests::oracle
