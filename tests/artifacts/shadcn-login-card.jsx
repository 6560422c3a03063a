import React, { useState } from 'react';
import { Card, CardContent, CardDescription, CardFooter, CardHeader, CardTitle } from '@/components/ui/card';
import { Button } from '@/components/ui/button';
import { Input } from '@/components/ui/input';
import { Label } from '@/components/ui/label';
import { Checkbox } from '@/components/ui/checkbox';
import { Alert, AlertDescription, AlertTitle } from '@/components/ui/alert';
import { AlertCircle, Mail } from 'lucide-react';

export default function LoginCard() {
  const [email, setEmail] = useState('');
  const [error, setError] = useState(false);
  return <Card className="w-[350px]">
    <CardHeader><CardTitle>Sign in</CardTitle><CardDescription>Enter your email to receive a magic link.</CardDescription></CardHeader>
    <CardContent className="space-y-4">
      {error && <Alert variant="destructive"><AlertCircle className="h-4 w-4" /><AlertTitle>Error</AlertTitle><AlertDescription>Please enter a valid email.</AlertDescription></Alert>}
      <Label htmlFor="email">Email</Label><Input id="email" type="email" value={email} onChange={(e) => setEmail(e.target.value)} />
      <Checkbox id="remember" /><Label htmlFor="remember">Remember me</Label>
    </CardContent>
    <CardFooter className="flex justify-between"><Button variant="outline">Cancel</Button>
      <Button id="submit" onClick={() => setError(!email.includes('@'))}><Mail className="mr-2 h-4 w-4" /> Send link</Button></CardFooter>
  </Card>;
}
