#pragma once

/// The contract of the unfolding engine: the one header through which a caller sees it.
///
/// Everything is asked for through a command name and a table of named values:
///
///     NU3D::CUnfold3DAPI api;
///     NU3D::CRef params(NU3D::VALTYPE_TABLE, NU3D::VALPROP_VALUE);
///     params->Add("#Iterations int 1", NU3D::CRef(3, NU3D::VALPROP_VALUE));
///     NU3D::CRef result = api.Do("Unfold", params);
///     if (NU3D::CUnfold3DAPI::HasError(result)) ...
///
/// A key is a whole descriptor string, quotes and default included; two descriptors that differ in
/// one character are two keys. Docs/Engine.md lists the commands, their keys and what each means.

#include "Unfold3D/contract/CEx.h"
#include "Unfold3D/contract/CRef.h"
#include "Unfold3D/contract/CTopoErrors.h"
#include "Unfold3D/contract/CUnfold3DAPI.h"
#include "Unfold3D/contract/CVal.h"
