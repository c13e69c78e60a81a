// SPDX-License-Identifier: GPL-2.0-or-later
// What screen readers are told that the toolkit does not tell by itself: above all of the view,
// which is one widget to the toolkit and three pictures to the user, graph, overview and level
// meter.
#pragma once

namespace corvelin {

class ViewWidget;

/// To be called once, before the first window.
void install_accessibility();

/// The descriptions of the pictures may have changed.
void announce_view(ViewWidget& view);

}  // namespace corvelin
