// SPDX-FileCopyrightText: 2026 The KUtil developers
// SPDX-License-Identifier: MIT
// The product's addresses, kept in one place.
#pragma once

namespace kutil::detail {

/// The product's web site.
constexpr const char* kProductWebSite = "https://www.example.com/kaldo3d";
/// The web site's page on the latest release.
constexpr const char* kProductLatestRelease = "https://www.example.com/kaldo3d/latest";
/// The support mailbox, as an address the shell opens.
constexpr const char* kProductSupportMail = "mailto:support@example.com";

}  // namespace kutil::detail
