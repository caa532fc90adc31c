#pragma once

/// A developer's aid: while the file ~/HaltOnInternalErrors exists, logs that and fails an assertion, so that an
/// internal error is noticed where it happens. Without the file nothing happens.
void IfNeededHaltOnInternalError();

/// Logs "Internal error" and halts if needed: what each platform call does about a request that it cannot serve.
void LogInternalError();
